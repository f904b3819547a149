#include "Applications/ApplicationsScreen.h"
#include "AppLibrary.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/ApplicationsTable.h"

namespace quillane {

Screen makeApplicationsScreen(AppLibrary& library, ContentState& state) {
    return {new ApplicationsTable(library, state), new ApplicationsDetail(library, state),
            [&library] { return library.badge(LibrarySection::applications); }};
}

} // namespace quillane
