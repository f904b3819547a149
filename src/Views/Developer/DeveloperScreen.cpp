#include "Developer/DeveloperScreen.h"
#include "AppLibrary.h"
#include "Developer/DeveloperDetail.h"
#include "Developer/DeveloperTable.h"

namespace quillane {

Screen makeDeveloperScreen(AppLibrary& library, ContentState& state) {
    return {new DeveloperTable(library, state), new DeveloperDetail(library, state),
            [&library] { return library.badge(LibrarySection::developer); }};
}

} // namespace quillane
