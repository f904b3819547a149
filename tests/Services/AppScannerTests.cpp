#include "AppScanner.h"
#include "Characters.h"
#include "OddNames.h"
#include "SamplePlatform.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <unistd.h>

namespace quillane {
namespace {

using Paths = std::vector<std::string>;
const std::string kOdd = OddNames::kOne;
const std::string kEmptyList = xmlPropertyList(Plist::dictionary({}));
constexpr PlatformError kNoPermission{ErrorCode::kReadNoPermission, std::nullopt};

std::vector<InstalledApp> scan(const SamplePlatform& sample) {
    return AppScanner::scanMetadata(sample.platform);
}

Paths pathsOf(const std::vector<InstalledApp>& apps) {
    Paths paths;
    for (const auto& app : apps) {
        paths.push_back(app.url.path());
    }
    return paths;
}

Paths foundOn(const SampleMac& mac) {
    const SamplePlatform sample(mac);
    return pathsOf(scan(sample));
}

// Where the order is that of a folder's listing.
Paths sorted(Paths paths) {
    std::ranges::sort(paths);
    return paths;
}

// The single application of a Mac.
InstalledApp onlyApp(const SamplePlatform& sample) {
    auto apps = scan(sample);
    EXPECT_EQ(apps.size(), 1U);
    return apps.empty() ? InstalledApp{} : apps.front();
}

InstalledApp onlyAppOf(const SampleMac& mac) {
    return onlyApp(SamplePlatform(mac));
}

SampleApp& toolOf(SampleMac& mac) {
    return mac.app("/Applications/Tool.app");
}

// What the scanner says of an application, in the words of the expectation; nothing is measured yet.
ExpectedApp told(const InstalledApp& app) {
    ExpectedApp told;
    told.path = app.url.path();
    told.name = app.name;
    told.identifier = app.bundleIdentifier;
    told.version = app.version;
    told.build = app.buildVersion;
    told.minimumSystem = app.minimumSystemVersion;
    told.architecture = app.architecture;
    told.source = app.source;
    told.isStore = app.isMacAppStore;
    told.lastUsed = app.lastUsed;
    return told;
}

void expectWholeSampleMac(SampleSpotlight spotlight) {
    const SamplePlatform sample(SampleMac::small(), spotlight);
    auto expected = sample.expectedApplications();
    auto apps = scan(sample);
    std::ranges::sort(apps, {}, &InstalledApp::url);

    ASSERT_EQ(apps.size(), expected.size());
    for (std::size_t i = 0; i < apps.size(); ++i) {
        expected[i].bundleBytes = 0;
        expected[i].leftovers.clear();
        EXPECT_EQ(told(apps[i]), expected[i]) << apps[i].url.path() << " / " << expected[i].path;
    }
}

TEST(AppScanner, FindsEveryApplicationOfTheSampleMacAsItWasDeclared) {
    expectWholeSampleMac(SampleSpotlight::scripted);
}

TEST(AppScanner, FindsTheSameThroughTheEmbeddedSearch) {
    expectWholeSampleMac(SampleSpotlight::embedded);
}

TEST(AppScanner, RecordsLeaveUnmeasured) {
    SampleMac mac;
    toolOf(mac)
        .identifier("com.example.tool")
        .size(kilobytes(20))
        .support("Library/Caches/com.example.tool", 1);
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.bundleBytes, 0);
    EXPECT_TRUE(app.leftovers.empty());
    EXPECT_FALSE(app.isMeasured);
}

TEST(AppScanner, AnEmptyMachineGivesNothing) {
    EXPECT_EQ(foundOn(SampleMac()), Paths());
}

// Where candidates come from

TEST(AppScanner, AsksSpotlightOnceWithTheSettledQuery) {
    const SamplePlatform sample{SampleMac()};
    scan(sample);
    const std::vector<ScriptedCommandRunner::Call> expected = {
        {"/usr/bin/mdfind", {"kMDItemContentType == 'com.apple.application-bundle'"}}};
    EXPECT_EQ(sample.commands.calls(), expected);
}

TEST(AppScanner, SpotlightComesFirstAndInItsOwnOrder) {
    SampleMac mac;
    mac.app("/Applications/B.app").outsideTheIndex();
    mac.app("/opt/Z.app");
    mac.app("/opt/A.app");
    EXPECT_EQ(foundOn(mac), (Paths{"/opt/Z.app", "/opt/A.app", "/Applications/B.app"}));
}

TEST(AppScanner, TheFiveRootsAreListedInTheirOrder) {
    SampleMac mac;
    const Paths roots = {"/Applications/1.app", "/Applications/Utilities/2.app", "/System/Applications/3.app",
                         "/System/Applications/Utilities/4.app", "/Users/alex/Applications/5.app"};
    for (auto root = roots.rbegin(); root != roots.rend(); ++root) {
        mac.app(*root);
    }
    SamplePlatform sample(mac);
    sample.withoutSpotlight();
    EXPECT_EQ(pathsOf(scan(sample)), roots);
}

// A root is looked into one level deeper than a folder of another root.
TEST(AppScanner, EachRootHasVendorFoldersOfItsOwn) {
    SampleMac mac;
    const Paths inside = {"/Applications/V/1.app", "/Applications/Utilities/V/2.app",
                          "/System/Applications/V/3.app", "/System/Applications/Utilities/V/4.app",
                          "/Users/alex/Applications/V/5.app"};
    for (const auto& path : inside) {
        mac.app(path);
    }
    SamplePlatform sample(mac);
    sample.withoutSpotlight();
    EXPECT_EQ(pathsOf(scan(sample)), inside);
}

TEST(AppScanner, TheBundlesOfARootComeBeforeThoseOfItsFolders) {
    SampleMac mac;
    mac.app("/Applications/A Vendor/Inner.app").outsideTheIndex();
    mac.app("/Applications/Zebra.app").outsideTheIndex();
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Zebra.app", "/Applications/A Vendor/Inner.app"}));
}

TEST(AppScanner, WithoutSpotlightTheRootsStillYieldTheirApplications) {
    SampleMac mac;
    mac.app("/Applications/Tool.app");
    mac.app("/opt/Elsewhere.app");
    SamplePlatform sample(mac);
    sample.withoutSpotlight();
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/Applications/Tool.app"}));
}

TEST(AppScanner, ARootThatCannotBeListedIsSkippedWithoutAWord) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").outsideTheIndex();
    mac.app("/System/Applications/Letters.app").outsideTheIndex();
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Applications"), kNoPermission);
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/System/Applications/Letters.app"}));
}

TEST(AppScanner, RootsThatAreMissingAreNothing) {
    SampleMac mac;
    mac.app("/opt/Tool.app");
    SamplePlatform sample(mac);
    ASSERT_EQ(::rmdir(sample.disk.at("/Applications").c_str()), 0);
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/opt/Tool.app"}));
}

TEST(AppScanner, AVendorFolderIsLookedIntoOneLevelDeep) {
    SampleMac mac;
    mac.app("/Applications/Vendor/Inner.app").outsideTheIndex();
    mac.app("/Applications/Vendor/Tools/Deeper.app").outsideTheIndex();
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Vendor/Inner.app"}));
}

TEST(AppScanner, AVendorFolderThatCannotBeListedIsSkipped) {
    SampleMac mac;
    mac.app("/Applications/Closed/Inner.app").outsideTheIndex();
    mac.app("/Applications/Open/Inner.app").outsideTheIndex();
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Applications/Closed"), kNoPermission);
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/Applications/Open/Inner.app"}));
}

TEST(AppScanner, AFolderWithAnExtensionIsNoVendorFolder) {
    SampleMac mac;
    mac.app("/Applications/Suite 2.1/Inner.app").outsideTheIndex();
    mac.app("/Applications/Suite.localized/Other.app").outsideTheIndex();
    mac.app("/Applications/Suite v2. 1/Third.app").outsideTheIndex(); // a blank: no extension
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Suite v2. 1/Third.app"}));
}

TEST(AppScanner, TheExtensionIsComparedExactly) {
    SampleMac mac;
    mac.app("/Applications/Shouting.APP").outsideTheIndex();
    mac.app("/Applications/Longer.appx").outsideTheIndex();
    mac.app("/Applications/Vendor/Shouting.App").outsideTheIndex();
    mac.indexed("/Applications/Shouting.APP");
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, PlainFilesAndLinksThatLeadNowhereAreNothing) {
    SampleMac mac;
    mac.file("/Applications/LICENSE", "text");
    mac.file("/Applications/Fake.app", "a file of that name");
    mac.link("/Applications/Gone", "/Volumes/Unplugged");
    mac.link("/Applications/Gone.app", "/Volumes/Unplugged/Gone.app");
    mac.link("/Applications/Round", "Round");
    mac.link("/Applications/Round.app", "Square.app");
    mac.link("/Applications/Square.app", "Round.app");
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, AFolderLinkedBackToItsOwnRootYieldsNothingTwice) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").outsideTheIndex();
    mac.link("/Applications/Again", ".");
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Tool.app"}));
}

// What Spotlight prints

TEST(AppScanner, EmptyLinesAndAMissingLastLineFeedMakeNoDifference) {
    SampleMac mac;
    mac.app("/opt/A.app");
    mac.app("/opt/B.app");
    SamplePlatform sample(mac);
    sample.answerSpotlight("\n\n/opt/A.app\n\n/opt/B.app");
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/opt/A.app", "/opt/B.app"}));
}

TEST(AppScanner, ATrailingSlashIsDropped) {
    SampleMac mac;
    mac.app("/opt/A.app");
    SamplePlatform sample(mac);
    sample.answerSpotlight("/opt/A.app/\n");
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/opt/A.app"}));
}

TEST(AppScanner, TextThatIsNoPathIsPassedOver) {
    SampleMac mac;
    mac.app("/opt/A.app");
    SamplePlatform sample(mac);
    sample.answerSpotlight("Failed to create query for 'x.app'.\nopt/A.app\n/\n/.app\n/missing.app\n");
    EXPECT_EQ(pathsOf(scan(sample)), Paths());
}

TEST(AppScanner, ANameWithALineFeedIsLostToSpotlightAndFoundInItsRoot) {
    SampleMac mac;
    mac.app("/Applications/Two\nLines.app");
    mac.app("/opt/Two\nLines.app");
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Two\nLines.app"}));
}

TEST(AppScanner, BytesThatAreNoTextAreRepairedFromSpotlightAndKeptFromAListing) {
    SampleMac mac;
    const auto broken = "/opt/Bro" + kOdd + "ken.app";
    mac.app(broken);
    mac.app("/opt/Bro\xEF\xBF\xBDken.app").outsideTheIndex();
    mac.app("/Applications/Ra" + kOdd + "w.app").rawPropertyList(kEmptyList).outsideTheIndex();
    // Repaired, the first name is that of the second application.
    EXPECT_EQ(foundOn(mac), (Paths{Text::repairedUtf8(broken), "/Applications/Ra" + kOdd + "w.app"}));
}

TEST(AppScanner, ANameOf255BytesIsFound) {
    SampleMac mac;
    const auto path = "/Applications/" + std::string(251, 'x') + ".app";
    mac.app(path);
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.url.path(), path);
    EXPECT_EQ(app.name, std::string(251, 'x'));
}

TEST(AppScanner, AnAnswerOfManyLinesOfRubbishEndsInTime) {
    SamplePlatform sample{SampleMac()};
    std::string output;
    for (int i = 0; i < 1'000; ++i) {
        output += "/\x01\x80/" + std::to_string(i) + "\n//..//..\n.app\n";
    }
    sample.answerSpotlight(std::move(output));
    EXPECT_EQ(pathsOf(scan(sample)), Paths());
}

// One record for each bundle

TEST(AppScanner, ABundleNamedByBothSourcesIsOneRecord) {
    SampleMac mac;
    mac.app("/Applications/Tool.app");
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Tool.app"}));
}

TEST(AppScanner, ALinkToABundleCountsOnceUnderThePathThatWasNamedFirst) {
    SampleMac mac;
    mac.app("/opt/Tool.app").outsideTheIndex();
    mac.link("/Applications/Link.app", "/opt/Tool.app");

    SamplePlatform linkFirst(mac);
    linkFirst.answerSpotlight("/Applications/Link.app\n/opt/Tool.app\n");
    EXPECT_EQ(pathsOf(scan(linkFirst)), (Paths{"/Applications/Link.app"}));

    SamplePlatform bundleFirst(mac);
    bundleFirst.answerSpotlight("/opt/Tool.app\n/Applications/Link.app\n");
    EXPECT_EQ(pathsOf(scan(bundleFirst)), (Paths{"/opt/Tool.app"}));
}

TEST(AppScanner, APathThroughALinkedFolderKeepsItsOwnSpelling) {
    SampleMac mac;
    mac.app("/opt/vendor/Tool.app").outsideTheIndex();
    mac.link("/Applications/Vendor", "/opt/vendor");
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.url.path(), "/Applications/Vendor/Tool.app");
    EXPECT_EQ(app.source, AppSource::applications);
}

TEST(AppScanner, CandidatesAreTakenInTheirStandardForm) {
    SampleMac mac;
    mac.app("/opt/Tool.app").outsideTheIndex();
    SamplePlatform sample(mac);
    sample.answerSpotlight("/opt//./Tool.app\n/opt/none/../Tool.app\n");
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/opt/Tool.app"}));
}

TEST(AppScanner, DuplicatesAreDroppedBeforeAnythingIsRejected) {
    SampleMac mac;
    mac.app("Library/Staging/Tool.app");
    mac.link("/Applications/Tool.app", "/Users/alex/Library/Staging/Tool.app");
    // The first name of the bundle is one that is not listed; its second name is the same bundle.
    EXPECT_EQ(foundOn(mac), Paths());
}

// Which bundles are applications of their own

struct Place {
    std::string path;
    bool isListed;
};

class AppScannerPlaces : public testing::TestWithParam<Place> {};

TEST_P(AppScannerPlaces, AreListedOrNot) {
    SampleMac mac;
    mac.app(GetParam().path);
    EXPECT_EQ(foundOn(mac), GetParam().isListed ? Paths{GetParam().path} : Paths()) << GetParam().path;
}

INSTANTIATE_TEST_SUITE_P(
    All, AppScannerPlaces,
    testing::Values(
        // Inside another bundle.
        Place{"/Applications/Outer.app/Contents/Inner.app", false},
        Place{"/Applications/Outer.apple/Inner.app", true}, Place{"/Volumes/Outer.app.d/Inner.app", true},
        Place{"/Volumes/Outer.APP/Inner.app", true},
        // The user's Library, and what only looks like it.
        Place{"/Users/alex/Library/Application Support/Tool.app", false},
        Place{"/Users/alex/Library.app", true}, Place{"/Users/alex/Library2/Tool.app", true},
        Place{"/Users/bob/Library/Tool.app", true}, Place{"/Users/alex/library/Tool.app", true},
        Place{"/Library/Tool.app", true},
        // Folders of the system.
        Place{"/System/Library/CoreServices/Finder.app", false}, Place{"/System/Applications/Mail.app", true},
        Place{"/System/Tool.app", true}, Place{"/Library/Apple/System/Library/Tool.app", false},
        Place{"/Library/Apple/Tool.app", true}, Place{"/Library/Image Capture/Devices/Tool.app", false},
        Place{"/usr/Tool.app", false}, Place{"/usr/libexec/Tool.app", false},
        Place{"/usrlocal/Tool.app", true}, Place{"/Volumes/Disk/usr/Tool.app", true},
        Place{"/private/var/folders/zz/Tool.app", false}, Place{"/private/var/folders.old/Tool.app", true},
        Place{"/private/var/db/Tool.app", true}, Place{"/Volumes/Disk/private/var/folders/Tool.app", true},
        // Anywhere on the path.
        Place{"/Users/alex/.Trash/Tool.app", false}, Place{"/Volumes/Disk/.Trash/501/Tool.app", false},
        Place{"/Users/alex/.Trashes/Tool.app", true}, Place{"/opt/Kit.framework/Resources/Tool.app", false},
        Place{"/Users/bob/Library/Developer/Xcode/DerivedData/X/Tool.app", false},
        Place{"/Users/bob/Library/Developer/CoreSimulator/Devices/Tool.app", false},
        Place{"/Users/bob/Library/Developer/Xcode/Archives/Tool.app", true},
        Place{"/Volumes/Disk/.Spotlight-V100/Tool.app", false},
        Place{"/Volumes/Disk/Backups.backupdb/Mac/Tool.app", false},
        Place{"/Volumes/Disk/Backups.backupdb.old/Tool.app", true},
        Place{"/Volumes/Disk/Old Backups.backupdb/Tool.app", true},
        Place{"/Volumes/Disk/backups.backupdb/Mac/Tool.app", true}));

TEST(AppScanner, WhatIsLeftOutIsToldFromThePathThatWasNamedAndNotFromWhereItLeads) {
    SampleMac mac;
    mac.app("/private/var/folders/zz/Tool.app").outsideTheIndex();
    mac.app("/usr/libexec/Other.app").outsideTheIndex();
    mac.link("/Applications/Tool.app", "/private/var/folders/zz/Tool.app");
    mac.link("/Applications/Vendor", "/usr/libexec");
    EXPECT_EQ(sorted(foundOn(mac)), (Paths{"/Applications/Tool.app", "/Applications/Vendor/Other.app"}));
}

// A machine whose /var is a link to /private/var, as every Mac's is.
TEST(AppScanner, WhatIsLeftOutIsToldFromTheStandardFormOfThePath) {
    SampleMac mac;
    mac.app("/usr/libexec/Other.app").outsideTheIndex();
    mac.app("/private/var/folders/zz/Tool.app").outsideTheIndex();
    mac.link("/var", "/private/var");
    SamplePlatform sample(mac);
    // The standard form is without /private where the rest exists, and /var is not among what is left out.
    sample.answerSpotlight("/opt/../usr/libexec/Other.app\n/private/var/folders/zz/Tool.app\n");
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/var/folders/zz/Tool.app"}));
}

TEST(AppScanner, ABundleInTheTrashIsRejectedWhoeverNamedIt) {
    SampleMac mac;
    mac.app("/Applications/.Trash/Old.app"); // a root's folder without extension, and in the index
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, AnOuterBundlePassesWhereItsInnerOneDoesNot) {
    SampleMac mac;
    toolOf(mac).helper("Helper");
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Tool.app"}));
}

TEST(AppScanner, TheProgramsOwnBundleIsListedLikeAnyOther) {
    SampleMac mac;
    mac.app("/Applications/Quillane.app");
    EXPECT_EQ(foundOn(mac), (Paths{"/Applications/Quillane.app"}));
}

// Where an application comes from

TEST(AppScanner, TheSourceFollowsFromThePath) {
    const std::pair<const char*, AppSource> rows[] = {
        {"/System/Applications/Tool.app", AppSource::system},
        {"/Systems/Tool.app", AppSource::other},
        {"/Applications/Tool.app", AppSource::applications},
        {"/Applications/Utilities/Tool.app", AppSource::applications},
        {"/Applications (Old)/Tool.app", AppSource::other},
        {"/Users/alex/Applications/Tool.app", AppSource::userApplications},
        {"/Users/alex/Downloads/Tool.app", AppSource::userApplications},
        {"/Users/alexandra/Tool.app", AppSource::userApplications}, // a plain prefix of the text
        {"/Users/bob/Applications/Tool.app", AppSource::other},
        {"/Volumes/Backup/Applications/Tool.app", AppSource::other},
    };
    SampleMac mac;
    for (const auto& [path, source] : rows) {
        mac.app(path);
    }
    const SamplePlatform sample(mac);
    const auto apps = scan(sample);
    ASSERT_EQ(apps.size(), std::size(rows));
    for (std::size_t i = 0; i < apps.size(); ++i) {
        EXPECT_EQ(apps[i].url.path(), rows[i].first);
        EXPECT_EQ(apps[i].source, rows[i].second) << rows[i].first;
    }
}

TEST(AppScanner, ANameTakenFromTheBundleKeepsBytesThatAreNoText) {
    SampleMac mac;
    mac.app("/Applications/Ra" + kOdd + "w.app").rawPropertyList(kEmptyList).outsideTheIndex();
    EXPECT_EQ(onlyAppOf(mac).name, "Ra" + kOdd + "w");
}

// What the property list tells

TEST(AppScanner, EveryFieldComesFromItsKey) {
    SampleMac mac;
    toolOf(mac)
        .displayName("Shown")
        .bundleName("Short")
        .identifier("com.example.tool")
        .version("1.2.3")
        .build("456")
        .minimumSystem("13.0")
        .architecture(Architecture::intel)
        .storeReceipt();
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.name, "Shown");
    EXPECT_EQ(app.bundleIdentifier, "com.example.tool");
    EXPECT_EQ(app.version, "1.2.3");
    EXPECT_EQ(app.buildVersion, "456");
    EXPECT_EQ(app.minimumSystemVersion, "13.0");
    EXPECT_EQ(app.architecture, Architecture::intel);
    EXPECT_TRUE(app.isMacAppStore);
}

TEST(AppScanner, WhatIsMissingHasItsFallback) {
    SampleMac mac;
    mac.app("/Applications/Bare.Bones.app").rawPropertyList(kEmptyList);
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.name, "Bare.Bones");
    EXPECT_EQ(app.bundleIdentifier, std::nullopt);
    EXPECT_EQ(app.version, "-");
    EXPECT_EQ(app.buildVersion, "-");
    EXPECT_EQ(app.minimumSystemVersion, std::nullopt);
    EXPECT_EQ(app.architecture, Architecture::unknown);
    EXPECT_FALSE(app.isMacAppStore);
}

TEST(AppScanner, TheBundleNameServesWhereNoDisplayNameIs) {
    SampleMac mac;
    toolOf(mac).bundleName("Short");
    EXPECT_EQ(onlyAppOf(mac).name, "Short");
}

TEST(AppScanner, AnEmptyTextIsAValueLikeAnyOther) {
    SampleMac mac;
    toolOf(mac).displayName("").bundleName("Short").identifier("").version("").build("").minimumSystem("");
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.name, "");
    EXPECT_EQ(app.bundleIdentifier, "");
    EXPECT_EQ(app.version, "");
    EXPECT_EQ(app.buildVersion, "");
    EXPECT_EQ(app.minimumSystemVersion, "");
}

TEST(AppScanner, AVersionThatIsANumberCountsAsMissing) {
    SampleMac mac;
    toolOf(mac).property("CFBundleShortVersionString", 3).property("CFBundleVersion", 4.5);
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.version, "-");
    EXPECT_EQ(app.buildVersion, "-");
}

TEST(AppScanner, ADisplayNameOfAnotherKindGivesWayToTheBundleName) {
    SampleMac mac;
    toolOf(mac).property("CFBundleDisplayName", true).property("CFBundleIdentifier", Plist::array({"com.x"}));
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.name, "Tool");
    EXPECT_EQ(app.bundleIdentifier, std::nullopt);
}

TEST(AppScanner, ABinaryPropertyListIsReadAsWell) {
    SampleMac mac;
    toolOf(mac).displayName("Café ☕️ 𝄞").version("2").binaryPropertyList();
    const auto app = onlyAppOf(mac);
    EXPECT_EQ(app.name, "Café ☕️ 𝄞");
    EXPECT_EQ(app.version, "2");
}

TEST(AppScanner, TwoApplicationsOfOneNameAreTwoRecords) {
    SampleMac mac;
    mac.app("/Applications/Twin.app");
    mac.app("/Users/alex/Applications/Twin.app");
    EXPECT_EQ(foundOn(mac).size(), 2U);
}

// Property lists that can't be read

class AppScannerBadLists : public testing::TestWithParam<std::pair<const char*, std::string>> {};

TEST_P(AppScannerBadLists, LeaveTheBundleOutAndTheOthersIn) {
    SampleMac mac;
    toolOf(mac).rawPropertyList(GetParam().second);
    mac.app("/opt/Fine.app");
    EXPECT_EQ(foundOn(mac), (Paths{"/opt/Fine.app"}));
}

std::string listOfDepth(int depth) {
    std::string xml = "<plist><dict><key>CFBundleName</key>";
    for (int i = 0; i < depth; ++i) {
        xml += "<array>";
    }
    return xml;
}

std::string truncated(std::string bytes) {
    bytes.resize(bytes.size() / 2);
    return bytes;
}

// An array that holds itself under a dictionary's key.
std::string cyclicList() {
    std::string bytes = "bplist00";
    bytes += std::string("\xd1\x01\x02", 3) +
             "\x51"
             "a" +
             std::string("\xa1\x02", 2);
    const std::string offsets("\x08\x0b\x0d", 3);
    const auto table = static_cast<char>(bytes.size());
    bytes += offsets + std::string(6, '\0') + std::string("\1\1", 2) + std::string(7, '\0') + '\3' +
             std::string(8, '\0') + std::string(7, '\0') + table;
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    All, AppScannerBadLists,
    testing::Values(std::pair{"empty", std::string()}, std::pair{"rubbish", std::string("\x00\xff\x01", 3)},
                    std::pair{"JSON", std::string(R"({"CFBundleName": "Tool"})")},
                    std::pair{"array on top", xmlPropertyList(Plist::array({"CFBundleName"}))},
                    std::pair{"text on top", xmlPropertyList("CFBundleName")},
                    std::pair{"truncated XML", truncated(xmlPropertyList(Plist::dictionary({{"A", "B"}})))},
                    std::pair{"truncated binary",
                              truncated(binaryPropertyList(Plist::dictionary({{"A", "B"}, {"C", 1}})))},
                    std::pair{"header alone", std::string("bplist00")}, std::pair{"cyclic", cyclicList()},
                    std::pair{"too deep", listOfDepth(100'000)}),
    [](const auto& info) {
        std::string name = info.param.first;
        std::erase(name, ' ');
        return name;
    });

TEST(AppScanner, APropertyListBeyondTheLimitLeavesTheBundleOut) {
    SampleMac mac;
    auto list = xmlPropertyList(Plist::dictionary({{"CFBundleName", "Huge"}}));
    list.append(std::size_t{17} << 20U, ' ');
    toolOf(mac).rawPropertyList(std::move(list));
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, ALargePropertyListWithinTheLimitIsRead) {
    SampleMac mac;
    toolOf(mac).property("Filler", std::string(1'000'000, 'x'));
    EXPECT_EQ(onlyAppOf(mac).name, "Tool");
}

TEST(AppScanner, AnEndlessPropertyListIsReadNoFurtherThanTheLimit) {
    SampleMac mac;
    toolOf(mac).withoutPropertyList();
    mac.sparse("/Applications/Tool.app/Contents/Info.plist", Bytes{1} << 40);
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, ABundleWithoutPropertyListIsNoApplication) {
    SampleMac mac;
    toolOf(mac).withoutPropertyList();
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, APropertyListThatIsAFolderOrAPipeIsNone) {
    SampleMac mac;
    toolOf(mac).withoutPropertyList();
    mac.folder("/Applications/Tool.app/Contents/Info.plist");
    mac.app("/Applications/Pipe.app").withoutPropertyList();
    mac.step([](DiskFolder& disk) { disk.folder("/Applications/Pipe.app/Contents"); });
    mac.step([](DiskFolder& disk) { disk.fifo("/Applications/Pipe.app/Contents/Info.plist"); });
    EXPECT_EQ(foundOn(mac), Paths());
}

TEST(AppScanner, ABundleThatVanishesBetweenListingAndReadingIsLeftOut) {
    SampleMac mac;
    mac.app("/Applications/Leaving.app");
    mac.app("/Applications/Staying.app");
    SamplePlatform sample(mac);
    const FileURL list("/Applications/Leaving.app/Contents/Info.plist");
    sample.files.before(list, [&] { ASSERT_EQ(::unlink(sample.disk.at(list.path()).c_str()), 0); });
    EXPECT_EQ(pathsOf(scan(sample)), (Paths{"/Applications/Staying.app"}));
}

TEST(AppScanner, ABundleThatVanishesAfterItsListWasReadIsStillARecord) {
    SampleMac mac;
    toolOf(mac).lastUsed(daysAgo(1)).storeReceipt();
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Applications/Tool.app"), {ErrorCode::kReadNoSuchFile, std::nullopt});
    sample.files.fail(FileURL("/Applications/Tool.app/Contents/MacOS/Tool"), kNoPermission);
    sample.files.fail(FileURL("/Applications/Tool.app/Contents/_MASReceipt/receipt"), kNoPermission);
    const auto app = onlyApp(sample);
    EXPECT_EQ(app.architecture, Architecture::unknown);
    EXPECT_FALSE(app.isMacAppStore);
    EXPECT_EQ(app.lastUsed, sample.mac.date(daysAgo(1)));
}

// The executable

TEST(AppScanner, ABundleThatNamesNoExecutableIsListedAsUnknown) {
    SampleMac mac;
    toolOf(mac).withoutExecutable();
    EXPECT_EQ(onlyAppOf(mac).architecture, Architecture::unknown);
}

TEST(AppScanner, AnExecutableThatIsMissingOrDamagedIsUnknown) {
    SampleMac mac;
    mac.app("/opt/A.app").missingExecutable();
    mac.app("/opt/B.app").executable(SampleExecutable::damaged(), Architecture::unknown);
    mac.app("/opt/C.app").executable(SampleExecutable::script(), Architecture::unknown);
    const SamplePlatform sample(mac);
    const auto apps = scan(sample);
    ASSERT_EQ(apps.size(), 3U);
    for (const auto& app : apps) {
        EXPECT_EQ(app.architecture, Architecture::unknown) << app.url.path();
    }
}

TEST(AppScanner, TheExecutableIsTheOneThatTheListNames) {
    SampleMac mac;
    toolOf(mac)
        .withoutExecutable()
        .architecture(Architecture::intel) // lies there under the bundle's name
        .property("CFBundleExecutable", "other name");
    mac.file("/Applications/Tool.app/Contents/MacOS/other name",
             SampleExecutable::thin(SampleExecutable::Cpu::arm64));
    EXPECT_EQ(onlyAppOf(mac).architecture, Architecture::appleSilicon);
}

TEST(AppScanner, AnExecutableNameThatIsEmptyOrHoldsANulNamesNoFile) {
    SampleMac mac;
    mac.app("/opt/A.app")
        .withoutExecutable()
        .architecture(Architecture::intel)
        .property("CFBundleExecutable", "");
    mac.app("/opt/B.app")
        .withoutExecutable()
        .architecture(Architecture::intel)
        .binaryPropertyList()
        .property("CFBundleExecutable", std::string("B\0", 2));
    const SamplePlatform sample(mac);
    const auto apps = scan(sample);
    ASSERT_EQ(apps.size(), 2U);
    EXPECT_EQ(apps[0].architecture, Architecture::unknown);
    EXPECT_EQ(apps[1].architecture, Architecture::unknown);
}

// The last use

TEST(AppScanner, TheLastUseIsThatOfTheIndex) {
    SampleMac mac;
    toolOf(mac).lastUsed(daysAgo(5)).modified(daysAgo(50));
    EXPECT_EQ(onlyAppOf(mac).lastUsed, mac.date(daysAgo(5)));
}

TEST(AppScanner, WhatTheIndexHasNeverSeenOpenedShowsTheDateOfItsBundle) {
    SampleMac mac;
    toolOf(mac).modified(daysAgo(50));
    EXPECT_EQ(onlyAppOf(mac).lastUsed, mac.date(daysAgo(50)));
}

TEST(AppScanner, WithoutAnyDateThereIsNoLastUse) {
    SampleMac mac;
    toolOf(mac);
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Applications/Tool.app"), kNoPermission);
    EXPECT_EQ(onlyApp(sample).lastUsed, std::nullopt);
}

TEST(AppScanner, TheIndexIsAskedForThePathThatIsKept) {
    SampleMac mac;
    mac.app("/opt/Tool.app").seenThroughLink("/Applications/Tool.app").outsideTheIndex();
    SamplePlatform sample(mac);
    sample.metadata.setLastUsed(FileURL("/opt/Tool.app"), mac.date(daysAgo(1)));
    sample.metadata.setLastUsed(FileURL("/Applications/Tool.app"), mac.date(daysAgo(2)));
    EXPECT_EQ(onlyApp(sample).lastUsed, mac.date(daysAgo(2)));
}

// What is touched

TEST(AppScanner, ReadsNothingInABundleButItsListItsHeadAndItsReceipt) {
    SampleMac mac;
    toolOf(mac).deep(3).size(kilobytes(16)).outsideTheIndex();
    const SamplePlatform sample(mac);
    scan(sample);
    Paths inside;
    for (const auto& url : sample.files.touched()) {
        if (url.path().starts_with("/Applications/Tool.app/")) {
            inside.push_back(url.path());
        }
    }
    EXPECT_EQ(sorted(inside), (Paths{"/Applications/Tool.app/Contents/Info.plist",
                                     "/Applications/Tool.app/Contents/MacOS/Tool",
                                     "/Applications/Tool.app/Contents/_MASReceipt/receipt"}));
}

TEST(AppScanner, RejectedBundlesAreNotRead) {
    SampleMac mac;
    mac.app("/Users/alex/.Trash/Old.app");
    const SamplePlatform sample(mac);
    scan(sample);
    for (const auto& url : sample.files.touched()) {
        EXPECT_FALSE(url.path().starts_with("/Users/alex/.Trash")) << url.path();
    }
}

} // namespace
} // namespace quillane
