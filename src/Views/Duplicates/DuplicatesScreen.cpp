#include "Duplicates/DuplicatesScreen.h"
#include "AppLibrary.h"
#include "Duplicates/DuplicatesDetail.h"
#include "Duplicates/DuplicatesTable.h"

namespace quillane {

Screen makeDuplicatesScreen(AppLibrary& library, ContentState& state) {
    return {new DuplicatesTable(library, state), new DuplicatesDetail(library, state),
            [&library] { return library.badge(LibrarySection::duplicates); }};
}

} // namespace quillane
