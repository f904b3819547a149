#include "LibraryTest.h"

namespace quillane {
namespace {

constexpr double kDay = 86'400;
constexpr Bytes kLargeMark = 500'000'000;

InstalledApp appNamed(const std::string& name) {
    InstalledApp app;
    app.name = name;
    app.url = FileURL("/Applications/" + name + ".app");
    app.source = AppSource::applications;
    return app;
}

LeftoverItem leftoverOf(Bytes bytes) {
    LeftoverItem item;
    item.bytes = bytes;
    return item;
}

class AppLibraryQueries : public LibraryTest {
  protected:
    std::vector<std::string> visible() const {
        std::vector<std::string> names;
        for (const auto& app : library->visibleApps()) {
            names.push_back(app.name);
        }
        return names;
    }
    bool isVisible(const InstalledApp& app) {
        library->apps = std::vector{app};
        return !library->visibleApps().empty();
    }
};

using Names = std::vector<std::string>;

TEST_F(AppLibraryQueries, SystemApplicationsAreHiddenAtFirstThoughTheyAreListed) {
    auto system = appNamed("System");
    system.source = AppSource::system;
    library->apps = std::vector{appNamed("Other"), system};
    EXPECT_EQ(visible(), Names{"Other"});
    EXPECT_EQ(library->apps->size(), 2U);
}

struct SourceRow {
    AppSource source;
    bool isThirdParty;
};

TEST_F(AppLibraryQueries, ThirdPartyIsEverySourceButTheSystem) {
    for (const auto& row :
         {SourceRow{AppSource::system, false}, SourceRow{AppSource::applications, true},
          SourceRow{AppSource::userApplications, true}, SourceRow{AppSource::other, true}}) {
        auto app = appNamed("App");
        app.source = row.source;
        EXPECT_EQ(isVisible(app), row.isThirdParty) << rawValue(row.source);
    }
}

TEST_F(AppLibraryQueries, AllShowsSystemApplicationsToo) {
    library->filter = AppFilter::all;
    auto system = appNamed("System");
    system.source = AppSource::system;
    EXPECT_TRUE(isVisible(system));
}

struct ArchitectureRow {
    Architecture architecture;
    bool isIntelOnly;
};

TEST_F(AppLibraryQueries, IntelOnlyIsWhatNoAppleProcessorRunsByItself) {
    library->filter = AppFilter::rosetta;
    for (const auto& row :
         {ArchitectureRow{Architecture::intel, true}, ArchitectureRow{Architecture::intel32, true},
          ArchitectureRow{Architecture::powerPC, true}, ArchitectureRow{Architecture::universal, false},
          ArchitectureRow{Architecture::appleSilicon, false},
          ArchitectureRow{Architecture::unknown, false}}) {
        auto app = appNamed("App");
        app.architecture = row.architecture;
        EXPECT_EQ(isVisible(app), row.isIntelOnly) << rawValue(row.architecture);
    }
}

TEST_F(AppLibraryQueries, FiltersOtherThanThirdPartyShowSystemApplications) {
    auto app = appNamed("System");
    app.source = AppSource::system;
    app.architecture = Architecture::intel;
    app.bundleBytes = kLargeMark + 1;
    for (const auto filter : {AppFilter::rosetta, AppFilter::unused, AppFilter::large}) {
        library->filter = filter;
        EXPECT_TRUE(isVisible(app)) << rawValue(filter);
    }
}

TEST_F(AppLibraryQueries, UnusedBeginsAtTheDayAfterTheHundredAndEightieth) {
    library->filter = AppFilter::unused;
    auto app = appNamed("App");
    app.lastUsed = clock.now().addingSeconds(-180 * kDay);
    EXPECT_FALSE(isVisible(app));
    app.lastUsed = clock.now().addingSeconds(-181 * kDay + 1);
    EXPECT_FALSE(isVisible(app)) << "the 181st day is not yet full";
    app.lastUsed = clock.now().addingSeconds(-181 * kDay);
    EXPECT_TRUE(isVisible(app));
}

TEST_F(AppLibraryQueries, UnusedFollowsTheClock) {
    library->filter = AppFilter::unused;
    auto app = appNamed("App");
    app.lastUsed = clock.now();
    EXPECT_FALSE(isVisible(app));
    clock.setNow(clock.now().addingSeconds(181 * kDay));
    EXPECT_TRUE(isVisible(app));
}

TEST_F(AppLibraryQueries, UnusedCountsCalendarDaysInTheUsersTimeZone) {
    library->filter = AppFilter::unused;
    clock.setCalendar("America/New_York");
    auto app = appNamed("App");
    // From summer time into winter time: 181 days by the wall clock take an hour more.
    app.lastUsed = Date::fromUnix(1'684'166'400);               // 2023-05-15 12:00 in New York
    clock.setNow(Date::fromUnix(1'684'166'400 + 181 * 86'400)); // 2023-11-12 11:00 there
    EXPECT_FALSE(isVisible(app));
    clock.setNow(clock.now().addingSeconds(3600));
    EXPECT_TRUE(isVisible(app));
}

TEST_F(AppLibraryQueries, AnApplicationThatWasNeverUsedIsUnused) {
    library->filter = AppFilter::unused;
    EXPECT_TRUE(isVisible(appNamed("App")));
}

TEST_F(AppLibraryQueries, LargeBeginsOneByteOverTheMark) {
    library->filter = AppFilter::large;
    auto app = appNamed("App");
    app.bundleBytes = kLargeMark;
    EXPECT_FALSE(isVisible(app));
    app.bundleBytes = kLargeMark + 1;
    EXPECT_TRUE(isVisible(app));
}

TEST_F(AppLibraryQueries, LargeCountsLeftoversToo) {
    library->filter = AppFilter::large;
    auto app = appNamed("App");
    app.bundleBytes = kLargeMark;
    app.leftovers = {leftoverOf(1)};
    EXPECT_TRUE(isVisible(app));
}

TEST_F(AppLibraryQueries, AnApplicationThatIsNotMeasuredYetIsNotLarge) {
    library->filter = AppFilter::large;
    EXPECT_FALSE(isVisible(appNamed("App")));
}

TEST_F(AppLibraryQueries, ASearchFindsPartsOfNamesInAnyCase) {
    library->apps = std::vector{appNamed("Photo Booth"), appNamed("Éclair"), appNamed("Terminal")};
    library->searchText = "PHOTO";
    EXPECT_EQ(visible(), Names{"Photo Booth"});
    library->searchText = "éCL";
    EXPECT_EQ(visible(), Names{"Éclair"});
}

TEST_F(AppLibraryQueries, ASearchFindsPartsOfABundleIdentifierThatTheNameDoesNotContain) {
    auto app = appNamed("Terminal");
    app.bundleIdentifier = "com.Example.shell";
    library->apps = std::vector{app, appNamed("Notes")};
    library->searchText = "example";
    EXPECT_EQ(visible(), Names{"Terminal"});
}

TEST_F(AppLibraryQueries, ASearchThatMatchesNothingShowsNothing) {
    library->apps = std::vector{appNamed("Notes")};
    library->searchText = "x";
    EXPECT_TRUE(visible().empty());
    EXPECT_EQ(library->totalVisibleBytes(), 0);
}

TEST_F(AppLibraryQueries, ASearchStaysWithinTheFilter) {
    auto system = appNamed("Notes of the System");
    system.source = AppSource::system;
    library->apps = std::vector{appNamed("Notes"), system};
    library->searchText = "notes";
    EXPECT_EQ(visible(), Names{"Notes"});
}

TEST_F(AppLibraryQueries, WhatPassesTheFilterIsThereWhateverIsSearchedFor) {
    EXPECT_FALSE(library->hasFilteredApps());
    auto system = appNamed("System");
    system.source = AppSource::system;
    library->apps = std::vector{system};
    EXPECT_FALSE(library->hasFilteredApps());
    library->filter = AppFilter::all;
    EXPECT_TRUE(library->hasFilteredApps());
    library->filter = AppFilter::thirdParty;
    library->apps = std::vector{system, appNamed("a")};
    library->searchText = "zzz";
    EXPECT_TRUE(library->hasFilteredApps());
    EXPECT_TRUE(visible().empty());
}

TEST_F(AppLibraryQueries, VisibleApplicationsKeepTheOrderOfTheList) {
    library->apps = std::vector{appNamed("c"), appNamed("a"), appNamed("b")};
    EXPECT_EQ(visible(), (Names{"c", "a", "b"}));
}

TEST_F(AppLibraryQueries, TheTotalFollowsFilterAndSearchAndCountsLeftovers) {
    auto first = appNamed("First");
    first.bundleBytes = 100;
    first.leftovers = {leftoverOf(20), leftoverOf(3)};
    auto second = appNamed("Second");
    second.bundleBytes = 1000;
    auto system = appNamed("System");
    system.source = AppSource::system;
    system.bundleBytes = 10'000;
    library->apps = std::vector{first, second, system};
    EXPECT_EQ(library->totalVisibleBytes(), 1123);
    library->filter = AppFilter::all;
    EXPECT_EQ(library->totalVisibleBytes(), 11'123);
    library->searchText = "first";
    EXPECT_EQ(library->totalVisibleBytes(), 123);
}

TEST_F(AppLibraryQueries, AnApplicationIsFoundByItsLocationWhateverTheFilter) {
    auto system = appNamed("System");
    system.source = AppSource::system;
    library->apps = std::vector{appNamed("Notes"), system};
    library->searchText = "x";
    EXPECT_EQ(library->appWithID(system.url), system);
}

TEST_F(AppLibraryQueries, NoLocationAndAnUnknownOneFindNothing) {
    library->apps = std::vector{appNamed("Notes")};
    EXPECT_EQ(library->appWithID(std::nullopt), std::nullopt);
    EXPECT_EQ(library->appWithID(FileURL("/Applications/Other.app")), std::nullopt);
}

TEST_F(AppLibraryQueries, OfSeveralAtOneLocationTheFirstIsFound) {
    auto first = appNamed("Notes");
    first.version = "1";
    auto second = appNamed("Notes");
    second.version = "2";
    library->apps = std::vector{first, second};
    EXPECT_EQ(library->appWithID(first.url)->version, "1");
}

TEST_F(AppLibraryQueries, WhoeverShowsThemHearsOfEveryFieldThatTheyRestOn) {
    library->apps = std::vector{appNamed("Notes")};
    const ChangeCounter shown([this] { (void)library->totalVisibleBytes(); });
    library->searchText = "n";
    EXPECT_EQ(shown.changes, 1);
    library->filter = AppFilter::all;
    EXPECT_EQ(shown.changes, 2);
    library->apps.modify([](auto& list) { list.front().bundleBytes = 5; });
    EXPECT_EQ(shown.changes, 3);
    library->phase = Phase{Kind::ready, 0, 0};
    EXPECT_EQ(shown.changes, 3);
}

} // namespace
} // namespace quillane
