// Another instance of the program over the same settings. Usage: add KEY TEXT [TIMES] | clear KEY
#include "DefaultsChanges.h"
#include "UserDefaults.h"
#include <cstdlib>
#include <string>

int main(int count, char** words) {
    using namespace quillane;
    const std::string order = count > 2 ? words[1] : "";
    UserDefaults defaults(QUILLANE_DEFAULTS_LOCK);
    if (order == "clear") {
        defaults.clear(words[2]);
        return 0;
    }
    const int times = count > 4 ? std::atoi(words[4]) : 1;
    for (int i = 0; order == "add" && i < times; ++i) {
        defaults.update(words[2], adding(words[3] + std::to_string(i)));
    }
    return order == "add" ? 0 : 2;
}
