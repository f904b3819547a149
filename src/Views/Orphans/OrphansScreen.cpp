#include "Orphans/OrphansScreen.h"
#include "AppLibrary.h"
#include "Orphans/OrphanTable.h"
#include "Orphans/OrphansDetail.h"

namespace quillane {

Screen makeOrphansScreen(AppLibrary& library, ContentState& state) {
    // The badge counts all groups, whatever the search says.
    return {new OrphanTable(library, state), new OrphansDetail(library, state),
            [&library] { return static_cast<int>(OrphanGroup::grouped(library.orphans.get()).size()); }};
}

} // namespace quillane
