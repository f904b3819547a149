#include "Screen.h"
#include "ApplicationsScreen.h"
#include "DeveloperScreen.h"
#include "OrphansScreen.h"
#include "OverviewScreen.h"
#include <algorithm>
#include <array>

namespace quillane {

namespace {

constexpr std::array kScreens = {
    StandingScreen{LibrarySection::overview, &makeOverviewScreen},
    StandingScreen{LibrarySection::applications, &makeApplicationsScreen},
    StandingScreen{LibrarySection::orphans, &makeOrphansScreen},
    StandingScreen{LibrarySection::developer, &makeDeveloperScreen},
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
