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

TEST_F(AppLibrarySampleMac, AnotherScanFindsTheSame) {
    const auto first = *library.apps;
    const auto orphans = *library.orphans;
    const auto locations = *library.developerCaches;
    scanned->scan();
    EXPECT_EQ(*library.apps, first);
    EXPECT_EQ(*library.orphans, orphans);
    EXPECT_EQ(*library.developerCaches, locations);
}

} // namespace
} // namespace quillane
