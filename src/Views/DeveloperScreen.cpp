#include "DeveloperScreen.h"
#include "AppLibrary.h"
#include "DeveloperDetail.h"
#include "DeveloperTable.h"

namespace quillane {

Screen makeDeveloperScreen(AppLibrary& library, ContentState& state) {
    return {new DeveloperTable(library, state), new DeveloperDetail(library, state),
            [&library] { return library.badge(LibrarySection::developer); }};
}

} // namespace quillane
