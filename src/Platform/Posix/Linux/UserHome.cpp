#include "UserHome.h"

namespace quillane::UserHome {

FileURL path() {
    const auto home = fromEnvironment("HOME");
    return home == FileURL() ? fromAccount() : home;
}

} // namespace quillane::UserHome
