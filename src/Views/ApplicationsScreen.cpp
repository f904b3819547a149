#include "ApplicationsScreen.h"
#include "AppLibrary.h"
#include "ApplicationsDetail.h"
#include "ApplicationsTable.h"

namespace quillane {

Screen makeApplicationsScreen(AppLibrary& library, ContentState& state) {
    return {new ApplicationsTable(library, state), new ApplicationsDetail(library, state),
            [&library] { return library.badge(LibrarySection::applications); }};
}

} // namespace quillane
