// Without a configuration of its own GNUstep would read and write in the home of whoever runs the tests.
#include <cstdio>
#include <cstdlib>

namespace {

__attribute__((constructor)) void requireOwnPlace() {
    if (std::getenv("GNUSTEP_CONFIG_FILE") == nullptr) {
        std::fputs("This is started by tools/check-gnustep, which gives it a place of its own.\n", stderr);
        std::_Exit(1);
    }
}

} // namespace
