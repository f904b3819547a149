// A whole scan over the sample Mac, from the metadata search to the last leftover.
#include "AppLibrary.h"
#include "IconCache.h"
#include "SampleMac.h"
#include "SamplePlatform.h"
#include "TextComparison.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {
namespace {

// Laid on disk and scanned once for all tests here, which only look.
class AppLibrarySampleMac : public testing::Test {
  protected:
    struct Scanned {
        Scanned() { scan(); }
        void scan() {
            library.refresh(AppLibrary::ScanReason::user);
            mac.runner.runAll();
            library.loadStartupItems();
            mac.runner.runAll();
        }
        SamplePlatform mac{SampleMac::small()};
        AppLibrary library{mac.platform};
    };
    static void SetUpTestSuite() { scanned = std::make_unique<Scanned>(); }
    static void TearDownTestSuite() { scanned.reset(); }
    static inline std::unique_ptr<Scanned> scanned;

    SamplePlatform& mac = scanned->mac;
    AppLibrary& library = scanned->library;
};

TEST_F(AppLibrarySampleMac, TheScanListsExactlyTheApplicationsThatTheMacHas) {
    ASSERT_EQ(library.phase->kind, AppLibrary::Phase::Kind::ready);
    std::vector<std::string> expected;
    for (const auto& app : mac.expectedApplications()) {
        expected.push_back(app.path);
    }
    std::vector<std::string> found;
    for (const auto& app : *library.apps) {
        found.push_back(app.url.path());
    }
    std::ranges::sort(expected);
    std::ranges::sort(found);
    EXPECT_EQ(found, expected);
}

TEST_F(AppLibrarySampleMac, EveryApplicationGetsItsFiguresAndOnlyThirdPartiesTheirLeftovers) {
    for (const auto& expected : mac.expectedApplications()) {
        const auto app = library.appWithID(FileURL(expected.path));
        ASSERT_TRUE(app.has_value()) << expected.path;
        EXPECT_TRUE(app->isMeasured);
        EXPECT_EQ(app->bundleBytes, expected.bundleBytes) << expected.path;
        std::vector<std::string> expectedLeftovers;
        if (expected.source != AppSource::system) {
            for (const auto& leftover : expected.leftovers) {
                expectedLeftovers.push_back(leftover.path);
            }
        }
        std::vector<std::string> leftovers;
        for (const auto& leftover : app->leftovers) {
            leftovers.push_back(leftover.url.path());
        }
        EXPECT_EQ(leftovers, expectedLeftovers) << expected.path;
    }
}

TEST_F(AppLibrarySampleMac, TheListIsInTheFindersOrder) {
    EXPECT_TRUE(std::ranges::is_sorted(
        *library.apps, [](const auto& a, const auto& b) { return Text::localizedStandardCompare(a, b) < 0; },
        &InstalledApp::name));
}

TEST_F(AppLibrarySampleMac, ExactlyWhatRemovedApplicationsLeftIsAnOrphan) {
    std::vector<ExpectedOrphan> found;
    for (const auto& item : *library.orphans) {
        found.push_back(
            {item.url.path(), item.category, item.identifier, item.vendor, item.bytes, item.requiresAdmin});
    }
    std::ranges::sort(found);
    EXPECT_EQ(found, mac.mac.expectedOrphans(mac.disk.path()));
}

TEST_F(AppLibrarySampleMac, ExactlyWhatToolsKeepIsADeveloperCache) {
    std::vector<ExpectedLocation> found;
    for (const auto& item : *library.developerCaches) {
        found.push_back({item.url.path(), item.tool, item.kind, item.safeToSweep, item.bytes});
    }
    std::ranges::sort(found);
    EXPECT_EQ(found, mac.mac.expectedLocations(mac.disk.path()));
}

TEST_F(AppLibrarySampleMac, ExactlyWhatLaunchdStartsIsAStartupItem) {
    std::vector<ExpectedStartupItem> found;
    for (const auto& item : *library.startupItems) {
        found.push_back({item.url.path(), item.label, item.kind, item.health, item.ownerName, item.isLoaded,
                         item.schedule()});
    }
    std::ranges::sort(found, {}, &ExpectedStartupItem::path);
    const auto expected = mac.mac.expectedStartupItems();
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i], expected[i]) << found[i].path << ", " << expected[i].path;
    }
}

TEST_F(AppLibrarySampleMac, EveryKindAndHealthOfAStartupItemIsThere) {
    for (const auto kind : kAllStartupItemKinds) {
        EXPECT_GT(std::ranges::count(*library.startupItems, kind, &StartupItem::kind), 0) << rawValue(kind);
    }
    for (const auto health : kAllStartupItemHealths) {
        EXPECT_GT(std::ranges::count(*library.startupItems, health, &StartupItem::health), 0)
            << rawValue(health);
    }
}

TEST_F(AppLibrarySampleMac, AnotherScanFindsTheSame) {
    const auto first = *library.apps;
    const auto orphans = *library.orphans;
    const auto locations = *library.developerCaches;
    scanned->scan();
    EXPECT_EQ(*library.apps, first);
    EXPECT_EQ(*library.orphans, orphans);
    EXPECT_EQ(*library.developerCaches, locations);
}

TEST(AppLibraryOnASampleMac, AnAgentIsStoppedOnceAndStaysListed) {
    const std::string label = "chat.relay.updater";
    const FileURL url("/Users/alex/Library/LaunchAgents/" + label + ".plist");
    SampleMac declared;
    declared.startupItem({url.path(), label, StartupItem::Kind::agent, StartupItem::Health::orphaned,
                          std::nullopt, true, "on demand"},
                         Plist::dictionary({{"Label", label}}));
    SamplePlatform mac(declared);
    AppLibrary library(mac.platform);
    library.loadStartupItems();
    mac.runner.runAll();
    std::vector<std::optional<std::string>> told;
    const auto stop = [&] {
        library.tasks().start([&](StopToken) -> Task<> {
            const auto message = co_await library.stopStartupItem(library.startupItems->front());
            told.push_back(message);
        });
        mac.runner.runAll();
    };
    ASSERT_EQ(library.startupItems->at(0).isLoaded, true);
    stop();
    ASSERT_EQ(library.startupItems->size(), 1U);
    EXPECT_EQ(library.startupItems->at(0).isLoaded, false);
    EXPECT_TRUE(mac.launchctl.loaded().empty());
    stop();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[0], std::nullopt);
    EXPECT_EQ(told[1], "Boot-out failed: 3: No such process");
}

} // namespace
} // namespace quillane
