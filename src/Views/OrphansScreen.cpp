#include "OrphansScreen.h"
#include "AppLibrary.h"
#include "OrphanTable.h"
#include "PanePlaceholder.h"
#include "ShownText.h"

namespace quillane {

Screen makeOrphansScreen(AppLibrary& library, ContentState& state) {
    // The badge counts all groups, whatever the search says.
    return {new OrphanTable(library, state),
            new PanePlaceholder(words(symbol(LibrarySection::orphans)), QStringLiteral("No Selection"),
                                QStringLiteral("Pick a dead app to see what it left behind.")),
            [&library] { return static_cast<int>(OrphanGroup::grouped(library.orphans.get()).size()); }};
}

} // namespace quillane
