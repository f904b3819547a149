#include "Files/FilesScreen.h"
#include "AppLibrary.h"
#include "Files/FilesDetail.h"
#include "Files/FilesTable.h"

namespace quillane {

Screen makeFilesScreen(AppLibrary& library, ContentState& state) {
    return {new FilesTable(library, state), new FilesDetail(library, state),
            [&library] { return library.badge(LibrarySection::files); }};
}

} // namespace quillane
