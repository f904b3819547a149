#include "OverviewScreen.h"
#include "OverviewDetailView.h"
#include "OverviewView.h"

namespace quillane {

Screen makeOverviewScreen(AppLibrary& library, ContentState& state) {
    return {new OverviewView(library, state), new OverviewDetailView(library), [] { return 0; }};
}

} // namespace quillane
