#include "DeveloperScreen.h"
#include "AppLibrary.h"
#include "DeveloperTable.h"
#include "PanePlaceholder.h"
#include "ShownText.h"

namespace quillane {

Screen makeDeveloperScreen(AppLibrary& library, ContentState& state) {
    return {new DeveloperTable(library, state),
            new PanePlaceholder(words(symbol(LibrarySection::developer)), QStringLiteral("No Selection"),
                                QStringLiteral("Pick a location to see what removing it would mean.")),
            [&library] { return static_cast<int>(library.developerCaches->size()); }};
}

} // namespace quillane
