// What is the same on every system; the rest lies in the folder of each.
#include "UserHome.h"
#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace quillane::UserHome {

FileURL fromEnvironment(const char* variable) {
    const char* home = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): the header says when
    return home != nullptr && home[0] == '/' ? FileURL(home) : FileURL();
}

FileURL fromAccount() {
    passwd account = {};
    passwd* found = nullptr;
    std::array<char, 16384> texts = {};
    if (::getpwuid_r(::getuid(), &account, texts.data(), texts.size(), &found) == 0 && found != nullptr &&
        account.pw_dir != nullptr) {
        return FileURL(account.pw_dir);
    }
    return {};
}

} // namespace quillane::UserHome
