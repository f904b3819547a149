#include "OrphanFinder.h"
#include "RecordedPlatform.h"
#include "SamplePlatform.h"
#include "SupportFileLocations.h"
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Installed = std::set<std::string>;

constexpr Ago kOld = daysAgo(100);

std::vector<OrphanItem> orphansOn(const SampleMac& mac, const Installed& installed = {}) {
    const SamplePlatform sample(mac);
    return OrphanFinder::orphans(sample.platform, installed);
}

// What is found when an old folder of this name lies among the caches.
std::vector<OrphanItem> found(const std::string& name, const Installed& installed = {}) {
    SampleMac mac;
    mac.file("Library/Caches/" + name + "/data", "x").modified("Library/Caches/" + name, kOld);
    return orphansOn(mac, installed);
}

std::optional<std::string> identifierOf(const std::string& name, const Installed& installed = {}) {
    const auto items = found(name, installed);
    return items.empty() ? std::nullopt : std::optional(items.front().identifier);
}

bool isOrphan(const std::string& name, const Installed& installed = {}) {
    return identifierOf(name, installed).has_value();
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST(OrphanFinder, ManyOfEqualSizeStayInTheOrderInWhichTheyWereMet) {
    SampleMac mac;
    for (const char* folder : {"Library/Caches/", "Library/Logs/", "Library/HTTPStorages/"}) {
        for (int i = 10; i < 40; ++i) {
            const auto path = folder + ("com.gone.tool" + std::to_string(i));
            mac.folder(path).modified(path, kOld);
        }
    }
    const SamplePlatform sample(mac);
    std::vector<FileURL> met;
    for (const auto& location : SupportFileLocations::all(sample.platform)) {
        if (const auto entries = sample.platform.files.list(location.url)) {
            for (const auto& entry : *entries) {
                if (entry.name.starts_with("com.gone.")) {
                    met.push_back(location.url.appending(entry.name));
                }
            }
        }
    }
    ASSERT_EQ(met.size(), 90U);
    std::vector<FileURL> listed;
    for (const auto& item : OrphanFinder::orphans(sample.platform, {})) {
        listed.push_back(item.url);
    }
    EXPECT_EQ(listed, met);
}

// The shape of the name

TEST(OrphanFinder, AnIdentifierOfThreePartsIsAnOrphan) {
    const auto items = found("com.example.tool");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().url, FileURL("/Users/alex/Library/Caches/com.example.tool"));
    EXPECT_EQ(items.front().category, "Caches");
    EXPECT_EQ(items.front().identifier, "com.example.tool");
    EXPECT_EQ(items.front().vendor, "com.example");
    EXPECT_EQ(items.front().lastModified, SampleMac().date(kOld));
    EXPECT_FALSE(items.front().requiresAdmin);
}

TEST(OrphanFinder, ASuffixOfTheSystemDoesNotCountAsAPart) {
    EXPECT_EQ(identifierOf("com.example.tool.plist"), "com.example.tool");
    EXPECT_EQ(identifierOf("com.example.tool.savedState"), "com.example.tool");
    EXPECT_EQ(identifierOf("com.example.tool.binarycookies"), "com.example.tool");
    EXPECT_FALSE(isOrphan("com.example.plist"));
}

TEST(OrphanFinder, OrdinaryNamesAreNeverOrphansHoweverOldAndLarge) {
    SampleMac mac;
    mac.tree("Library/Application Support/Acme", megabytes(2))
        .modified("Library/Application Support/Acme", yearsAgo(9))
        .file("Library/Application Support/notes.txt", "x")
        .modified("Library/Application Support/notes.txt", yearsAgo(9));
    EXPECT_THAT(orphansOn(mac), IsEmpty());
    EXPECT_FALSE(isOrphan("Widgets"));
    EXPECT_FALSE(isOrphan("com.example"));
}

TEST(OrphanFinder, AHiddenNameIsNeverAnOrphan) {
    EXPECT_FALSE(isOrphan(".com.example.tool"));
}

TEST(OrphanFinder, AFullStopThatCarriesAnAccentSeparatesNothing) {
    EXPECT_FALSE(isOrphan("com.example.\u0301tool"));
    EXPECT_TRUE(isOrphan("com.example.t\u0301ool"));
}

TEST(OrphanFinder, EmptyPartsCountForTheShapeAndNotForTheVendor) {
    const auto items = found("com..tool");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().identifier, "com..tool");
    EXPECT_EQ(items.front().vendor, "com.tool");
}

// Stopping

TEST(OrphanFinder, AStopGivesWhatWasFoundByThenAndReadsNoFurther) {
    SampleMac mac;
    for (const std::string name : {"com.example.a", "com.example.b", "com.example.c"}) {
        mac.file("Library/Caches/" + name + "/data", "x").modified("Library/Caches/" + name, kOld);
    }
    const SamplePlatform sample(mac);
    RecordedPlatform recorded(sample.platform);
    StopSource source;
    recorded.files.beforeEach([&](const RecordingFileSystem::Call& call) {
        if (call.call == FileCall::walk) { // of the first that is measured
            source.requestStop();
        }
    });
    EXPECT_EQ(OrphanFinder::orphans(recorded.platform, {}, source.token()).size(), 1U);
    EXPECT_EQ(recorded.files.calls(FileCall::walk).size(), 1U);
    EXPECT_EQ(recorded.files.calls(FileCall::list).back(), FileURL("/Users/alex/Library/Caches"));
}

// Wrappers

TEST(OrphanFinder, AGroupContainerStandsForTheIdentifierInIt) {
    const auto items = found("group.com.example.tool");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().identifier, "com.example.tool");
    EXPECT_EQ(items.front().vendor, "com.example");
}

TEST(OrphanFinder, TheLastCandidateWithThreePartsIsReportedAndTheBarestGivesTheVendor) {
    const auto items = found("ABCDE12345.group.com.example");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().identifier, "group.com.example");
    EXPECT_EQ(items.front().vendor, "com.example");
}

TEST(OrphanFinder, WithoutAVendorTheWholeIdentifierIsTheVendor) {
    const auto items = found("ABCDEFGHIJ.group.tool");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().identifier, "ABCDEFGHIJ.group.tool");
    EXPECT_EQ(items.front().vendor, "ABCDEFGHIJ.group.tool");
}

TEST(OrphanFinder, AWrapperHidesNoClaimedIdentifier) {
    EXPECT_FALSE(isOrphan("group.com.apple.notes"));
    EXPECT_FALSE(isOrphan("ABCDE12345.com.example.tool", {"com.example.tool"}));
    EXPECT_FALSE(isOrphan("ABCDE12345.group.com.example.tool.plist", {"com.example.other"}));
}

// What is claimed

TEST(OrphanFinder, AnInstalledApplicationProtectsItselfItsPartsAndItsVendorInAnyCase) {
    const Installed installed = {"com.Example.App"};
    EXPECT_FALSE(isOrphan("com.example.app", installed));
    EXPECT_FALSE(isOrphan("com.example.app.helper", installed));
    EXPECT_FALSE(isOrphan("COM.EXAMPLE.OTHER.tool", installed));
    EXPECT_FALSE(isOrphan("ABCDE12345.com.example.widget", installed));
    EXPECT_TRUE(isOrphan("com.example2.tool.data", installed));
    EXPECT_TRUE(isOrphan("org.example.app.data", installed));
}

TEST(OrphanFinder, AnIdentifierOfOneWordProtectsItsPartsAndNoVendor) {
    const Installed installed = {"tool"};
    EXPECT_FALSE(isOrphan("tool.one.two", installed));
    EXPECT_TRUE(isOrphan("tools.one.two", installed));
}

TEST(OrphanFinder, EquivalentSpellingsOfOneIdentifierAreTheSame) {
    EXPECT_FALSE(isOrphan("com.caf\u00E9.tool", {"com.CAFE\u0301.other"}));
    EXPECT_TRUE(isOrphan("com.cafe.tool", {"com.CAFE\u0301.other"}));
}

TEST(OrphanFinder, NothingOfTheSystemIsAnOrphanAndOnlyThat) {
    EXPECT_FALSE(isOrphan("com.apple.Safari.data"));
    EXPECT_FALSE(isOrphan("COM.APPLE.tool"));
    EXPECT_TRUE(isOrphan("com.applesoft.tool.data"));
}

TEST(OrphanFinder, WithoutInstalledApplicationsEveryNameOfTheShapeIsReported) {
    SampleMac mac;
    for (const auto* name : {"com.one.tool", "com.two.tool", "com.apple.tool", "Acme"}) {
        mac.file("Library/Logs/" + std::string(name), "x")
            .modified("Library/Logs/" + std::string(name), kOld);
    }
    std::vector<std::string> identifiers;
    for (const auto& item : orphansOn(mac)) {
        identifiers.push_back(item.identifier);
    }
    EXPECT_THAT(identifiers, testing::UnorderedElementsAre("com.one.tool", "com.two.tool"));
}

TEST(OrphanFinder, TheReportedIdentifierKeepsItsCaseAndTheVendorDoesNot) {
    const auto items = found("Com.Example.Tool");
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().identifier, "Com.Example.Tool");
    EXPECT_EQ(items.front().vendor, "com.example");
}

// The date

bool isOrphanOfAge(Ago ago) {
    SampleMac mac;
    mac.file("Library/Caches/com.example.tool/data", "x").modified("Library/Caches/com.example.tool", ago);
    return !orphansOn(mac).empty();
}

TEST(OrphanFinder, WhatWasTouchedInTheLastThirtyDaysIsLeftAlone) {
    EXPECT_FALSE(isOrphanOfAge(daysAgo(29)));
    EXPECT_FALSE(isOrphanOfAge(daysAgo(30) - std::chrono::seconds(1)));
    EXPECT_TRUE(isOrphanOfAge(daysAgo(30)));
    EXPECT_TRUE(isOrphanOfAge(daysAgo(31)));
}

TEST(OrphanFinder, TheDateIsThatOfTheEntryAndNotOfWhatLiesInIt) {
    SampleMac mac;
    mac.file("Library/Caches/com.example.tool/data", "x")
        .modified("Library/Caches/com.example.tool/data", daysAgo(1))
        .modified("Library/Caches/com.example.tool", kOld);
    EXPECT_EQ(orphansOn(mac).size(), 1U);
}

TEST(OrphanFinder, AnUnknownDateProtectsNothing) {
    SampleMac mac;
    mac.file("Library/Caches/com.example.tool", "x");
    SamplePlatform sample(mac);
    sample.files.fail(FileURL("/Users/alex/Library/Caches/com.example.tool"),
                      {ErrorCode::kReadNoPermission, EACCES});
    const auto items = OrphanFinder::orphans(sample.platform, {});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().lastModified, std::nullopt);
}

// Where it looks

TEST(OrphanFinder, EveryLocationIsLookedThroughUnderItsOwnWord) {
    SampleMac mac;
    std::vector<std::string> expected;
    {
        const SamplePlatform sample{SampleMac()};
        for (const auto& location : SupportFileLocations::all(sample.platform)) {
            const auto path = location.url.appending("com.example.tool").path();
            mac.file(path, "x").modified(path, kOld);
            expected.push_back(location.category + (path.starts_with("/Library") ? " (admin)" : ""));
        }
    }
    std::vector<std::string> told;
    for (const auto& item : orphansOn(mac)) {
        told.push_back(item.category + (item.requiresAdmin ? " (admin)" : ""));
    }
    EXPECT_EQ(expected.size(), 21U);
    EXPECT_EQ(told, expected) << "equal sizes keep the order of the locations";
}

TEST(OrphanFinder, ALocationThatCannotBeListedIsSkipped) {
    SampleMac mac;
    for (const auto* location : {"Library/Caches/", "Library/Logs/"}) {
        mac.file(location + std::string("com.example.tool"), "x")
            .modified(location + std::string("com.example.tool"), kOld);
    }
    SamplePlatform sample(mac);
    sample.files.deny(FileURL("/Users/alex/Library/Caches"));
    const auto items = OrphanFinder::orphans(sample.platform, {});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().category, "Logs");
}

TEST(OrphanFinder, OnlyTheTopOfALocationIsLookedAt) {
    SampleMac mac;
    mac.file("Library/Caches/Acme/com.example.tool/data", "x")
        .modified("Library/Caches/Acme/com.example.tool", kOld);
    EXPECT_THAT(orphansOn(mac), IsEmpty());
}

TEST(OrphanFinder, OnlyWhatIsReportedIsMeasured) {
    SampleMac mac;
    for (const auto* name : {"com.example.gone", "com.installed.tool", "com.example.fresh", "Acme"}) {
        mac.file("Library/Caches/" + std::string(name) + "/data", "x")
            .modified("Library/Caches/" + std::string(name), kOld);
    }
    mac.modified("Library/Caches/com.example.fresh", daysAgo(1));
    SamplePlatform sample(mac);
    EXPECT_EQ(OrphanFinder::orphans(sample.platform, {"com.installed.app"}).size(), 1U);
    const FileURL caches("/Users/alex/Library/Caches");
    const auto asked = [&](const char* name) {
        return std::ranges::count(sample.files.touched(), caches.appending(name));
    };
    EXPECT_EQ(asked("com.example.gone"), 3) << "its date, and the two questions of measuring it";
    EXPECT_EQ(asked("com.installed.tool"), 0);
    EXPECT_EQ(asked("com.example.fresh"), 1) << "its date alone";
    EXPECT_EQ(asked("Acme"), 0);
}

// Jobs of launchd

std::string jobOf(const std::string& program) {
    return R"(<plist version="1.0"><dict><key>ProgramArguments</key><array><string>)" + program +
           "</string></array></dict></plist>";
}

TEST(OrphanFinder, TheListOfAJobWhoseProgramIsThereIsNoOrphan) {
    const std::vector<std::string> folders = {"/Users/alex/Library/LaunchAgents", "/Library/LaunchAgents",
                                              "/Library/LaunchDaemons"};
    for (const auto& folder : folders) {
        SampleMac mac;
        mac.file("/opt/tool", "x");
        for (const auto& [name, content] :
             {std::pair("com.living.tool.plist", jobOf("/opt/tool")),
              std::pair("com.dead.tool.plist", jobOf("/opt/gone")),
              std::pair("com.silent.tool.plist", std::string("<plist><dict/></plist>"))}) {
            const auto path = folder + "/" + name;
            mac.file(path, content).modified(path, kOld);
        }
        std::vector<std::string> names;
        for (const auto& item : orphansOn(mac)) {
            names.emplace_back(item.url.lastPathComponent());
        }
        EXPECT_THAT(names, testing::UnorderedElementsAre("com.dead.tool.plist", "com.silent.tool.plist"))
            << folder;
    }
}

TEST(OrphanFinder, AListThatLiesElsewhereIsNoJob) {
    for (const char* folder : {"Library/Preferences", "/Library/PrivilegedHelperTools"}) {
        const auto path = std::string(folder) + "/com.example.tool.plist";
        SampleMac mac;
        mac.file("/opt/tool", "x").file(path, jobOf("/opt/tool")).modified(path, kOld);
        EXPECT_EQ(orphansOn(mac).size(), 1U) << folder;
    }
}

TEST(OrphanFinder, OnlyAJobThatPassedByNameAndDateIsOpened) {
    SampleMac mac;
    mac.file("/opt/tool", "x");
    for (const auto* name : {"com.example.tool", "com.installed.tool", "com.example.fresh", "tool"}) {
        const auto path = "Library/LaunchAgents/" + std::string(name) + ".plist";
        mac.file(path, jobOf("/opt/tool")).modified(path, kOld);
    }
    mac.modified("Library/LaunchAgents/com.example.fresh.plist", daysAgo(1));
    const SamplePlatform sample(mac);
    RecordedPlatform recorded(sample.platform);
    EXPECT_THAT(OrphanFinder::orphans(recorded.platform, {"com.installed.app"}), IsEmpty());
    EXPECT_THAT(recorded.files.calls(FileCall::read),
                ElementsAre(FileURL("/Users/alex/Library/LaunchAgents/com.example.tool.plist")));
}

// What comes out

TEST(OrphanFinder, TheLargestStandFirstAndWhatTakesNoSpaceIsListedToo) {
    SampleMac mac;
    mac.tree("Library/Caches/com.example.small", kilobytes(40))
        .modified("Library/Caches/com.example.small", kOld)
        .tree("Library/Caches/com.example.large", kilobytes(400))
        .modified("Library/Caches/com.example.large", kOld)
        .folder("Library/Caches/com.example.empty")
        .modified("Library/Caches/com.example.empty", kOld);
    const auto items = orphansOn(mac);
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].identifier, "com.example.large");
    EXPECT_GE(items[0].bytes, 400'000);
    EXPECT_EQ(items[1].identifier, "com.example.small");
    EXPECT_EQ(items[2].identifier, "com.example.empty");
    EXPECT_EQ(items[2].bytes, 0);
}

TEST(OrphanFinder, ALinkIsJudgedAndMeasuredAsALink) {
    SampleMac mac;
    mac.tree("Documents/large", megabytes(1))
        .link("Library/Caches/com.example.tool", "/Users/alex/Documents/large")
        .modified("Library/Caches/com.example.tool", kOld);
    const auto items = orphansOn(mac);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().bytes, 0);
}

TEST(OrphanFinder, WhatVanishesBetweenListingAndMeasuringIsListedWithoutDateAndSize) {
    SampleMac mac;
    mac.file("Library/Caches/com.example.tool/data", "x").modified("Library/Caches/com.example.tool", kOld);
    SamplePlatform sample(mac);
    sample.files.vanish(FileURL("/Users/alex/Library/Caches/com.example.tool"));
    const auto items = OrphanFinder::orphans(sample.platform, {});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().bytes, 0);
    EXPECT_EQ(items.front().lastModified, std::nullopt);
}

} // namespace
} // namespace quillane
