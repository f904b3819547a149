#include "Startup/StartupScreen.h"
#include "AppLibrary.h"
#include "Startup/StartupDetail.h"
#include "Startup/StartupTable.h"

namespace quillane {

Screen makeStartupScreen(AppLibrary& library, ContentState& state) {
    return {new StartupTable(library, state), new StartupDetail(library, state),
            [&library] { return library.badge(LibrarySection::startup); }};
}

} // namespace quillane
