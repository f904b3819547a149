#include "UserHome.h"

namespace quillane::UserHome {

// Whatever HOME says: settings, Trash and all else of this system go by the account, or by this variable.
FileURL path() {
    const auto home = fromEnvironment("CFFIXED_USER_HOME");
    return home == FileURL() ? fromAccount() : home;
}

} // namespace quillane::UserHome
