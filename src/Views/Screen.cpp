#include "Screen.h"
#include "ApplicationsScreen.h"
#include "OverviewScreen.h"
#include <algorithm>
#include <array>

namespace quillane {

namespace {

constexpr std::array kScreens = {
    StandingScreen{LibrarySection::overview, &makeOverviewScreen},
    StandingScreen{LibrarySection::applications, &makeApplicationsScreen},
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
