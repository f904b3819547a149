#include "Shell/StandingScreens.h"
#include "Applications/ApplicationsScreen.h"
#include "Developer/DeveloperScreen.h"
#include "Duplicates/DuplicatesScreen.h"
#include "Files/FilesScreen.h"
#include "Orphans/OrphansScreen.h"
#include "Overview/OverviewScreen.h"
#include "Startup/StartupScreen.h"
#include <algorithm>
#include <array>

namespace quillane {

namespace {

constexpr std::array kScreens = {
    StandingScreen{LibrarySection::overview, &makeOverviewScreen},
    StandingScreen{LibrarySection::applications, &makeApplicationsScreen},
    StandingScreen{LibrarySection::orphans, &makeOrphansScreen},
    StandingScreen{LibrarySection::developer, &makeDeveloperScreen},
    StandingScreen{LibrarySection::files, &makeFilesScreen},
    StandingScreen{LibrarySection::duplicates, &makeDuplicatesScreen},
    StandingScreen{LibrarySection::startup, &makeStartupScreen, Tint::Orange},
};
static_assert(std::ranges::is_sorted(kScreens, {}, &StandingScreen::section));

} // namespace

std::span<const StandingScreen> standingScreens() {
    return kScreens;
}

LibrarySection initialSection() {
    return kScreens.front().section;
}

} // namespace quillane
