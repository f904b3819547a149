#include "AppScanner.h"
#include "LeftoverFinder.h"
#include "OddNames.h"
#include "SamplePlatform.h"
#include "SupportFileLocations.h"
#include <algorithm>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using Confidence = LeftoverItem::Confidence;
using Paths = std::vector<std::string>;
const std::string kOdd = OddNames::kOne;
const std::string kOther = OddNames::kOther;

InstalledApp appNamed(std::string name, std::optional<std::string> identifier) {
    InstalledApp app;
    app.url = FileURL("/Applications/" + name + ".app");
    app.name = std::move(name);
    app.bundleIdentifier = std::move(identifier);
    return app;
}

const InstalledApp kTool = appNamed("Tool", "com.example.tool");

std::vector<LeftoverItem> leftoversOn(const SampleMac& mac, const InstalledApp& app = kTool) {
    const SamplePlatform sample(mac);
    return LeftoverFinder::leftovers(sample.platform, app);
}

Paths pathsOf(const std::vector<LeftoverItem>& items) {
    Paths paths;
    for (const auto& item : items) {
        paths.push_back(item.url.path());
    }
    return paths;
}

// Whether an entry of this name in a location that knows identifiers alone belongs to an application.
bool matchesByIdentifier(const std::string& name, const std::string& identifier = "com.example.tool") {
    SampleMac mac;
    mac.file("Library/Preferences/" + name, "x");
    const auto items = leftoversOn(mac, appNamed("Unrelated", identifier));
    if (!items.empty()) {
        EXPECT_EQ(items.front().confidence, Confidence::high);
    }
    return !items.empty();
}

TEST(LeftoverFinder, FindsTheSupportFilesOfEveryApplicationOfTheSampleMac) {
    const SamplePlatform sample(SampleMac::small());
    auto apps = AppScanner::scanMetadata(sample.platform);
    std::ranges::sort(apps, {}, &InstalledApp::url);
    const auto expected = sample.expectedApplications();
    ASSERT_EQ(apps.size(), expected.size());
    for (std::size_t i = 0; i < apps.size(); ++i) {
        std::vector<ExpectedApp::Leftover> told;
        for (const auto& item : LeftoverFinder::leftovers(sample.platform, apps[i])) {
            told.push_back({item.url.path(), item.category, item.confidence, item.bytes, item.requiresAdmin,
                            item.isCache});
        }
        EXPECT_EQ(told, expected[i].leftovers) << expected[i].path;
    }
}

// Matching by identifier

TEST(LeftoverFinder, TheIdentifierItselfMatches) {
    EXPECT_TRUE(matchesByIdentifier("com.example.tool"));
}

TEST(LeftoverFinder, TheIdentifierWithADotAndMoreMatches) {
    EXPECT_TRUE(matchesByIdentifier("com.example.tool.plist"));
    EXPECT_TRUE(matchesByIdentifier("com.example.tool.helper"));
    EXPECT_TRUE(matchesByIdentifier("com.example.tool."));
}

TEST(LeftoverFinder, ALongerWordDoesNotMatch) {
    EXPECT_FALSE(matchesByIdentifier("com.example.toolbox"));
    EXPECT_FALSE(matchesByIdentifier("com.example.tool-beta.plist"));
    EXPECT_FALSE(matchesByIdentifier("xcom.example.tool"));
}

TEST(LeftoverFinder, MoreBeforeADotAndTheIdentifierMatches) {
    EXPECT_TRUE(matchesByIdentifier("ABCDE12345.com.example.tool"));
    EXPECT_TRUE(matchesByIdentifier("group.com.example.tool"));
    EXPECT_TRUE(matchesByIdentifier(".com.example.tool"));
}

TEST(LeftoverFinder, TheIdentifierInTheMiddleDoesNotMatch) {
    EXPECT_FALSE(matchesByIdentifier("ABCDE12345.com.example.tool.plist"));
    EXPECT_FALSE(matchesByIdentifier("group.com.example.tool.shared"));
}

TEST(LeftoverFinder, ASharedVendorIsNoMatch) {
    EXPECT_FALSE(matchesByIdentifier("com.example"));
    EXPECT_FALSE(matchesByIdentifier("com.example.other"));
}

TEST(LeftoverFinder, IdentifiersAreComparedWithTheirCase) {
    EXPECT_FALSE(matchesByIdentifier("com.example.Tool"));
    EXPECT_FALSE(matchesByIdentifier("COM.EXAMPLE.TOOL.plist"));
    EXPECT_FALSE(matchesByIdentifier("group.com.Example.tool"));
}

TEST(LeftoverFinder, AnIdentifierOfOneWordMatchesByTheSameRule) {
    EXPECT_TRUE(matchesByIdentifier("tool.plist", "tool"));
    EXPECT_FALSE(matchesByIdentifier("toolbox", "tool"));
}

// Matching by name

TEST(LeftoverFinder, ANameMatchesIgnoringItsCaseWhereTheLocationAllowsIt) {
    SampleMac mac;
    mac.folder("Library/Caches/tool");
    mac.folder("Library/Containers/tool");
    const auto items = leftoversOn(mac);
    ASSERT_EQ(pathsOf(items), (Paths{"/Users/alex/Library/Caches/tool"}));
    EXPECT_EQ(items[0].confidence, Confidence::medium);
}

TEST(LeftoverFinder, SixLocationsAllowTheBareName) {
    SampleMac mac;
    const Paths all = {"/Users/alex/Library/Application Support",
                       "/Users/alex/Library/Caches",
                       "/Users/alex/Library/Preferences",
                       "/Users/alex/Library/Preferences/ByHost",
                       "/Users/alex/Library/Containers",
                       "/Users/alex/Library/Group Containers",
                       "/Users/alex/Library/Saved Application State",
                       "/Users/alex/Library/HTTPStorages",
                       "/Users/alex/Library/WebKit",
                       "/Users/alex/Library/Cookies",
                       "/Users/alex/Library/Logs",
                       "/Users/alex/Library/LaunchAgents",
                       "/Users/alex/Library/Application Scripts",
                       "/Users/alex/Library/Internet Plug-Ins",
                       "/Users/alex/Library/PreferencePanes",
                       "/Library/Application Support",
                       "/Library/Caches",
                       "/Library/Preferences",
                       "/Library/LaunchAgents",
                       "/Library/LaunchDaemons",
                       "/Library/PrivilegedHelperTools"};
    for (const auto& folder : all) {
        mac.folder(folder + "/Tool");
    }
    EXPECT_EQ(pathsOf(leftoversOn(mac)),
              (Paths{"/Users/alex/Library/Application Support/Tool", "/Users/alex/Library/Caches/Tool",
                     "/Users/alex/Library/Logs/Tool", "/Users/alex/Library/Internet Plug-Ins/Tool",
                     "/Users/alex/Library/PreferencePanes/Tool", "/Library/Application Support/Tool"}));
}

TEST(LeftoverFinder, TheWholeNameMustBeEqual) {
    SampleMac mac;
    mac.folder("Library/Caches/Tools").folder("Library/Caches/Tool ").folder("Library/Caches/Tool.old");
    mac.folder("Library/Caches/My Tool");
    EXPECT_EQ(leftoversOn(mac), std::vector<LeftoverItem>());
}

TEST(LeftoverFinder, NamesOfOtherScriptsCompareIgnoringCaseWithoutALocale) {
    SampleMac mac;
    mac.folder("Library/Caches/STRASSE").folder("Library/Caches/strase");
    EXPECT_EQ(pathsOf(leftoversOn(mac, appNamed("Straße", "com.example.tool"))),
              (Paths{"/Users/alex/Library/Caches/STRASSE"}));
}

// An application whose bundle is its only name may have one that is no text, and so may a stranger's folder.
TEST(LeftoverFinder, NamesThatAreNoTextMatchOnlyByTheSameBytes) {
    SampleMac mac;
    mac.folder("Library/Caches/ra" + kOdd + "w").folder("Library/Caches/Ra" + kOther + "w");
    mac.folder("Library/Caches/Ra\uFFFDw");
    EXPECT_EQ(pathsOf(leftoversOn(mac, appNamed("Ra" + kOdd + "w", "com.example.tool"))),
              (Paths{"/Users/alex/Library/Caches/ra" + kOdd + "w"}));
    EXPECT_EQ(pathsOf(leftoversOn(mac, appNamed("ra\uFFFDw", "com.example.tool"))),
              (Paths{"/Users/alex/Library/Caches/Ra\uFFFDw"}));
}

TEST(LeftoverFinder, TheLongestNameThatAFileMayHaveStillMatches) {
    SampleMac mac;
    std::string sharp;
    std::string plain;
    for (int i = 0; i < 127; ++i) {
        sharp += "\u00DF";
        plain += "sS";
    }
    mac.folder("Library/Caches/" + sharp);
    mac.folder("Library/Logs/" + plain);
    EXPECT_EQ(leftoversOn(mac, appNamed(plain, "com.example.tool")).size(), 2U);
    EXPECT_EQ(leftoversOn(mac, appNamed(sharp, "com.example.tool")).size(), 2U);
    EXPECT_EQ(leftoversOn(mac, appNamed(sharp + sharp, "com.example.tool")).size(), 0U);
}

TEST(LeftoverFinder, AnEntryThatMatchesByBothIsHigh) {
    SampleMac mac;
    mac.folder("Library/Caches/com.example.tool");
    const auto items = leftoversOn(mac, appNamed("COM.example.TOOL", "com.example.tool"));
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].confidence, Confidence::high);
}

TEST(LeftoverFinder, AnApplicationWithoutIdentifierHasNoLeftoversThoughItsNameWouldMatch) {
    SampleMac mac;
    mac.folder("Library/Caches/Tool").file("Library/Preferences/.plist", "x").file("Library/Caches/.x", "x");
    EXPECT_EQ(leftoversOn(mac, appNamed("Tool", std::nullopt)), std::vector<LeftoverItem>());
    EXPECT_EQ(leftoversOn(mac, appNamed("Tool", "")), std::vector<LeftoverItem>());
}

TEST(LeftoverFinder, AnApplicationOfEmptyNameMatchesByIdentifierAlone) {
    SampleMac mac;
    mac.folder("Library/Caches/com.example.tool").folder("Library/Caches/Something");
    EXPECT_EQ(leftoversOn(mac, appNamed("", "com.example.tool")).size(), 1U);
}

TEST(LeftoverFinder, AnEntryOfTwoApplicationsIsToldForBoth) {
    SampleMac mac;
    mac.folder("Library/Caches/com.example.tool.helper");
    const SamplePlatform sample(mac);
    EXPECT_EQ(LeftoverFinder::leftovers(sample.platform, kTool).size(), 1U);
    EXPECT_EQ(
        LeftoverFinder::leftovers(sample.platform, appNamed("Helper", "com.example.tool.helper")).size(), 1U);
}

// What an item tells

TEST(LeftoverFinder, AnItemOfTheHomeFolderNeedsNoAdministrator) {
    SampleMac mac;
    mac.allocated("Library/Preferences/com.example.tool.plist", 4096);
    const std::vector<LeftoverItem> expected = {
        {FileURL("/Users/alex/Library/Preferences/com.example.tool.plist"), "Preferences", Confidence::high,
         4096, false, false}};
    EXPECT_EQ(leftoversOn(mac), expected);
}

TEST(LeftoverFinder, AnItemOfTheSharedCachesNeedsAnAdministratorAndIsACache) {
    SampleMac mac;
    mac.folder("/Library/Caches/com.example.tool");
    const std::vector<LeftoverItem> expected = {
        {FileURL("/Library/Caches/com.example.tool"), "Caches (shared)", Confidence::high, 0, true, true}};
    EXPECT_EQ(leftoversOn(mac), expected);
}

TEST(LeftoverFinder, AFolderIsMeasuredWithAllThatLiesInIt) {
    SampleMac mac;
    mac.tree("Library/Caches/com.example.tool", kilobytes(200));
    const SamplePlatform sample(mac);
    const auto items = LeftoverFinder::leftovers(sample.platform, kTool);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].bytes, allocatedOnDisk(sample.disk.at(items[0].url.path())));
    EXPECT_GE(items[0].bytes, kilobytes(200));
}

TEST(LeftoverFinder, ALinkIsAnItemThatOccupiesNothing) {
    SampleMac mac;
    mac.allocated("Documents/big", kilobytes(100));
    mac.link("Library/Caches/com.example.tool", "/Users/alex/Documents");
    const auto items = leftoversOn(mac);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].bytes, 0);
}

TEST(LeftoverFinder, OnlyDirectEntriesAreLookedAt) {
    SampleMac mac;
    mac.folder("Library/Caches/Vendor/com.example.tool");
    EXPECT_EQ(leftoversOn(mac), std::vector<LeftoverItem>());
}

TEST(LeftoverFinder, TheFolderOfTheByHostPreferencesIsALocationAndNoEntry) {
    SampleMac mac;
    mac.file("Library/Preferences/ByHost/com.example.tool.ABCD.plist", "x");
    const auto items = leftoversOn(mac);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].category, "Preferences (ByHost)");
}

// Order

TEST(LeftoverFinder, TheLargestComesFirst) {
    SampleMac mac;
    mac.allocated("Library/Preferences/com.example.tool.plist", 8'192);
    mac.allocated("Library/Caches/com.example.tool", 4'096);
    mac.allocated("/Library/LaunchDaemons/com.example.tool.plist", 16'384);
    EXPECT_EQ(pathsOf(leftoversOn(mac)), (Paths{"/Library/LaunchDaemons/com.example.tool.plist",
                                                "/Users/alex/Library/Preferences/com.example.tool.plist",
                                                "/Users/alex/Library/Caches/com.example.tool"}));
}

TEST(LeftoverFinder, EqualSizesStayInTheOrderOfTheLocations) {
    SampleMac mac;
    Paths expected;
    for (const char* folder :
         {"/Users/alex/Library/Application Support", "/Users/alex/Library/Caches",
          "/Users/alex/Library/Preferences", "/Users/alex/Library/Containers", "/Users/alex/Library/Cookies",
          "/Users/alex/Library/Logs", "/Users/alex/Library/LaunchAgents", "/Library/Application Support",
          "/Library/Caches", "/Library/LaunchDaemons", "/Library/PrivilegedHelperTools"}) {
        expected.push_back(std::string(folder) + "/com.example.tool");
        mac.folder(expected.back());
    }
    EXPECT_EQ(pathsOf(leftoversOn(mac)), expected);
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST(LeftoverFinder, ManyOfEqualSizeStayInTheOrderInWhichTheyWereMet) {
    SampleMac mac;
    for (const char* folder : {"Library/Caches", "Library/Preferences", "Library/Logs"}) {
        for (int i = 10; i < 40; ++i) {
            mac.folder(std::string(folder) + "/com.example.tool." + std::to_string(i));
        }
    }
    const SamplePlatform sample(mac);
    Paths met;
    for (const auto& location : SupportFileLocations::all(sample.platform)) {
        if (const auto entries = sample.platform.files.list(location.url)) {
            for (const auto& entry : *entries) {
                met.push_back(location.url.appending(entry.name).path());
            }
        }
    }
    std::erase_if(met, [](const std::string& path) { return path.find("com.example.tool") == path.npos; });
    ASSERT_EQ(met.size(), 90U);
    EXPECT_EQ(pathsOf(LeftoverFinder::leftovers(sample.platform, kTool)), met);
}

// Bad input

TEST(LeftoverFinder, ALocationThatCannotBeListedIsSkipped) {
    SampleMac mac;
    mac.folder("Library/Caches/com.example.tool").folder("Library/Logs/com.example.tool");
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Users/alex/Library/Caches"), {ErrorCode::kReadNoPermission, std::nullopt});
    EXPECT_EQ(pathsOf(LeftoverFinder::leftovers(sample.platform, kTool)),
              (Paths{"/Users/alex/Library/Logs/com.example.tool"}));
}

TEST(LeftoverFinder, AMachineWithoutLibraryFoldersGivesNothing) {
    SamplePlatform sample{SampleMac()};
    PosixFileSystem files(sample.disk.path(), FileURL("/Users/nobody"));
    const Platform platform{files,        sample.commands, sample.metadata,
                            sample.clock, sample.runner,   sample.workspace,
                            sample.trash, sample.running,  sample.defaults};
    EXPECT_TRUE(LeftoverFinder::leftovers(platform, kTool).empty());
}

TEST(LeftoverFinder, AnEntryThatVanishesBeforeItIsMeasuredOccupiesNothing) {
    SampleMac mac;
    mac.allocated("Library/Caches/com.example.tool", kilobytes(16));
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Users/alex/Library/Caches/com.example.tool"),
                      {ErrorCode::kReadNoSuchFile, std::nullopt});
    const auto items = LeftoverFinder::leftovers(sample.platform, kTool);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].bytes, 0);
}

TEST(LeftoverFinder, NamesThatAreNoTextOrHoldLineFeedsAreBytesLikeOthers) {
    SampleMac mac;
    mac.folder("Library/Caches/com.example.tool." + kOdd + kOther);
    mac.folder("Library/Caches/com.example.tool\n");
    mac.folder("Library/Caches/" + kOdd + ".com.example.tool").folder("Library/Caches/" + kOdd);
    auto paths = pathsOf(leftoversOn(mac));
    std::ranges::sort(paths);
    EXPECT_EQ(paths, (Paths{"/Users/alex/Library/Caches/com.example.tool." + kOdd + kOther,
                            "/Users/alex/Library/Caches/" + kOdd + ".com.example.tool"}));
}

TEST(LeftoverFinder, ALinkLoopEndsWithNothing) {
    SampleMac mac;
    mac.link("Library/Caches/com.example.tool", "com.example.tool");
    mac.tree("Library/Logs/com.example.tool", kilobytes(8));
    mac.link("Library/Logs/com.example.tool/again", "..");
    const auto items = leftoversOn(mac);
    ASSERT_EQ(items.size(), 2U);
    EXPECT_LT(items[0].bytes, kilobytes(40));
    EXPECT_EQ(items[1].bytes, 0);
}

TEST(LeftoverFinder, AStopLeavesTheItemsAndEndsTheirMeasuring) {
    SampleMac mac;
    mac.tree("Library/Caches/com.example.tool", kilobytes(64));
    const SamplePlatform sample(mac);
    StopSource source;
    source.requestStop();
    const auto items = LeftoverFinder::leftovers(sample.platform, kTool, source.token());
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].bytes, 0);
}

} // namespace
} // namespace quillane
