#include "Orphans/OrphansScreen.h"
#include "AppLibrary.h"
#include "Orphans/OrphanTable.h"
#include "Orphans/OrphansDetail.h"

namespace quillane {

Screen makeOrphansScreen(AppLibrary& library, ContentState& state) {
    return {new OrphanTable(library, state), new OrphansDetail(library, state),
            [&library] { return library.badge(LibrarySection::orphans); }};
}

} // namespace quillane
