#include "Overview/OverviewScreen.h"
#include "Overview/OverviewDetailView.h"
#include "Overview/OverviewView.h"

namespace quillane {

Screen makeOverviewScreen(AppLibrary& library, ContentState& state) {
    return {new OverviewView(library, state), new OverviewDetailView(library), [] { return 0; }};
}

} // namespace quillane
