#include "DeveloperCacheFinder.h"
#include "RecordedPlatform.h"
#include "SamplePlatform.h"
#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Texts = std::vector<std::string>;

std::vector<DevCacheItem> foundOn(const SampleMac& mac) {
    const SamplePlatform sample(mac);
    return DeveloperCacheFinder::find(sample.platform, Priority::userInitiated);
}

Texts kindsOf(const std::vector<DevCacheItem>& items) {
    Texts kinds;
    for (const auto& item : items) {
        kinds.push_back(item.kind);
    }
    return kinds;
}

Texts kindsOn(const SampleMac& mac) {
    return kindsOf(foundOn(mac));
}

// The paths of a Mac on which each of these folders holds something.
Texts foundAmong(const Texts& folders) {
    SampleMac mac;
    for (const auto& folder : folders) {
        mac.file(folder + "/file", "x");
    }
    Texts paths;
    for (const auto& item : foundOn(mac)) {
        paths.push_back(item.url.path().substr(SampleMac::kHome.size() + 1));
    }
    return paths;
}

// The words of the one dependency folder at a path.
DevCacheItem dependenciesAt(const std::string& path) {
    SampleMac mac;
    mac.file(path + "/file", "x");
    const auto items = foundOn(mac);
    EXPECT_EQ(items.size(), 1U) << path;
    return items.empty() ? DevCacheItem() : items.front();
}

// The known places

struct Place {
    const char* path; // of what is found, which for one row per child is a child
    const char* tool;
    const char* kind;
    bool safeToSweep;
    const char* consequence;
};

constexpr std::array kPlaces = {
    Place{"Library/Developer/Xcode/DerivedData", "Xcode", "Derived data", true,
          "Next build of each project starts from scratch."},
    Place{"Library/Developer/Xcode/iOS DeviceSupport/a", "Xcode", "iOS device support - a", true,
          "Re-downloaded the next time you plug in a device running that iOS version."},
    Place{"Library/Developer/Xcode/watchOS DeviceSupport/b", "Xcode", "watchOS device support - b", true,
          "Re-downloaded when a watch with that version connects."},
    Place{"Library/Developer/Xcode/tvOS DeviceSupport/c", "Xcode", "tvOS device support - c", true,
          "Re-downloaded when an Apple TV with that version connects."},
    Place{"Library/Developer/Xcode/Archives", "Xcode", "Archives", false,
          "Needed to symbolicate crash reports from builds you shipped."},
    Place{"Library/Developer/CoreSimulator/Caches", "Simulator", "Simulator caches", true,
          "Rebuilt on the next simulator boot."},
    Place{"Library/Developer/CoreSimulator/Devices", "Simulator", "Simulator devices", false,
          "Every simulator and the apps installed on them. Use Xcode's Devices window to remove old ones."},
    Place{"Library/Caches/Homebrew", "Homebrew", "Download cache", true,
          "Formulae are re-downloaded when reinstalled."},
    Place{"Library/Caches/CocoaPods", "CocoaPods", "Spec and pod cache", true,
          "Pods are re-fetched on the next pod install."},
    Place{"Library/Caches/ms-playwright", "Playwright", "Browser binaries", true,
          "Browsers are re-downloaded by the next npx playwright install."},
    Place{"Library/Caches/Cypress", "Cypress", "Binary cache", true,
          "Cypress re-downloads its binary on the next install."},
    Place{"Library/Caches/pnpm", "pnpm", "Content-addressable store", true,
          "Packages are re-fetched on the next install."},
    Place{"Library/Caches/Yarn", "Yarn", "Package cache", true,
          "Packages are re-fetched on the next install."},
    Place{"Library/Caches/go-build", "Go", "Build cache", true, "Next go build recompiles everything once."},
    Place{"Library/Caches/JetBrains", "JetBrains", "IDE caches", true,
          "IDEs re-index projects on next open."},
    Place{"Library/Caches/node-gyp", "node-gyp", "Node headers", true,
          "Re-downloaded when a native module next compiles."},
    Place{"Library/Caches/typescript", "TypeScript", "Type acquisition cache", true,
          "Editors re-fetch type definitions as needed."},
    Place{"Library/Caches/pip", "pip", "Wheel cache", true,
          "Packages are re-downloaded on the next install."},
    Place{".npm/_cacache", "npm", "Package cache", true, "Packages are re-fetched on the next install."},
    Place{".cache", "Various", "XDG cache directory", true,
          "Shared by many CLI tools; each rebuilds its own part."},
    Place{".gradle/caches", "Gradle", "Dependency cache", true,
          "Dependencies are re-downloaded on the next build."},
    Place{".cargo/registry", "Cargo", "Crate registry", true, "Crates are re-downloaded on the next build."},
    Place{".m2/repository", "Maven", "Local repository", true,
          "Artifacts are re-downloaded on the next build."},
    Place{".nuget/packages", "NuGet", "Package cache", true, "Packages are re-restored on the next build."},
    Place{".cocoapods/repos", "CocoaPods", "Spec repos", true, "Re-cloned on the next pod install."},
    Place{"Library/Application Support/MobileSync/Backup/d", "Finder", "iPhone / iPad backup - d", false,
          "A full device backup. Only remove backups of devices you no longer own."},
};

TEST(DeveloperCacheFinder, EveryKnownPlaceIsFoundInItsOrderWithItsWords) {
    SampleMac mac;
    for (const auto& place : kPlaces) {
        mac.file(std::string(place.path) + "/file", "x").modified(place.path, daysAgo(3));
    }
    const auto items = foundOn(mac);
    ASSERT_EQ(items.size(), kPlaces.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& place = kPlaces[i];
        const DevCacheItem expected{FileURL(std::string(SampleMac::kHome) + "/" + place.path),
                                    place.tool,
                                    place.kind,
                                    items[i].bytes,
                                    mac.date(daysAgo(3)),
                                    place.safeToSweep,
                                    place.consequence};
        EXPECT_EQ(items[i], expected) << place.path;
        EXPECT_GT(items[i].bytes, 0);
    }
}

TEST(DeveloperCacheFinder, ACacheThatIsThereAndEmptyIsNotListed) {
    SampleMac mac;
    mac.folder("Library/Caches/pip").folder(".cargo/registry/src").folder("Projects/shop/node_modules");
    EXPECT_THAT(foundOn(mac), IsEmpty());
}

TEST(DeveloperCacheFinder, ThreeVersionsOfDeviceSupportAreThreeRowsAndNoneForTheFolder) {
    EXPECT_THAT(foundAmong({"Library/Developer/Xcode/iOS DeviceSupport/15.0",
                            "Library/Developer/Xcode/iOS DeviceSupport/16.0",
                            "Library/Developer/Xcode/iOS DeviceSupport/17.0",
                            "Library/Developer/Xcode/iOS DeviceSupport/.hidden"}),
                ElementsAre("Library/Developer/Xcode/iOS DeviceSupport/15.0",
                            "Library/Developer/Xcode/iOS DeviceSupport/16.0",
                            "Library/Developer/Xcode/iOS DeviceSupport/17.0"));
}

TEST(DeveloperCacheFinder, AChildThatTheSystemHidesIsNoRow) {
    SampleMac mac;
    const std::string support = "Library/Developer/Xcode/iOS DeviceSupport";
    mac.file(support + "/15.0/file", "x").file(support + "/16.0/file", "x");
    SamplePlatform sample(mac);
    sample.files.flagHidden(FileURL(std::string(SampleMac::kHome) + "/" + support + "/15.0"));
    EXPECT_THAT(kindsOf(DeveloperCacheFinder::find(sample.platform, Priority::userInitiated)),
                ElementsAre("iOS device support - 16.0"));
}

TEST(DeveloperCacheFinder, AFolderThatTheFinderMarksAsAPackageIsNotEnteredAndOneThatItHidesIs) {
    SampleMac mac;
    mac.file("Projects/marked/node_modules/file", "x").file("Projects/hidden/node_modules/file", "x");
    SamplePlatform sample(mac);
    sample.files.markAsPackage(FileURL(std::string(SampleMac::kHome) + "/Projects/marked"));
    sample.files.flagHidden(FileURL(std::string(SampleMac::kHome) + "/Projects/hidden"));
    EXPECT_THAT(kindsOf(DeveloperCacheFinder::find(sample.platform, Priority::userInitiated)),
                ElementsAre("node_modules in hidden"));
}

TEST(DeveloperCacheFinder, AFileBesideTheBackupsIsARowToo) {
    SampleMac mac;
    mac.file("Library/Application Support/MobileSync/Backup/stray.zip", "x");
    EXPECT_THAT(kindsOn(mac), ElementsAre("iPhone / iPad backup - stray.zip"));
}

TEST(DeveloperCacheFinder, AFolderOfChildrenThatCannotBeListedGivesNothing) {
    SampleMac mac;
    mac.file("Library/Application Support/MobileSync/Backup/device/file", "x");
    SamplePlatform sample(mac);
    sample.files.deny(FileURL("/Users/alex/Library/Application Support/MobileSync/Backup"));
    EXPECT_THAT(DeveloperCacheFinder::find(sample.platform, Priority::utility), IsEmpty());
}

TEST(DeveloperCacheFinder, ALinkInPlaceOfACacheTakesNoSpaceOfItsOwn) {
    SampleMac mac;
    mac.tree("Elsewhere/cache", kilobytes(100)).link(".cache", "/Users/alex/Elsewhere/cache");
    EXPECT_THAT(foundOn(mac), IsEmpty());
}

TEST(DeveloperCacheFinder, TheLargestStandFirstAndKnownPlacesBeforeDependenciesOfEqualSize) {
    SampleMac mac;
    mac.file("Projects/a/node_modules/file", "x")
        .file(".m2/repository/file", "x")
        .file(".npm/_cacache/file", "x")
        .file("Desktop/b/node_modules/file", "x")
        .tree("code/c/node_modules", kilobytes(100));
    EXPECT_THAT(kindsOn(mac), ElementsAre("node_modules in c", "Package cache", "Local repository",
                                          "node_modules in b", "node_modules in a"));
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST(DeveloperCacheFinder, ManyOfEqualSizeStandInTheOrderOfTheirPaths) {
    SampleMac mac;
    Texts expected;
    for (int i = 10; i < 70; ++i) {
        const auto name = "p" + std::to_string(i);
        mac.file("Projects/" + name + "/node_modules/file", "x");
        expected.push_back("node_modules in " + name);
    }
    EXPECT_EQ(kindsOn(mac), expected);
}

TEST(DeveloperCacheFinder, AFolderWhoseDateCannotBeReadIsListedWithoutOne) {
    // Asked twice about the folder: for its size, and then for its date.
    class DatesRefused final : public ForwardingFileSystem {
      public:
        using ForwardingFileSystem::ForwardingFileSystem;
        Result<ResourceValues> resourceValues(const FileURL& url) const override {
            if (url == FileURL("/Users/alex/.npm/_cacache") && m_asked++ > 0) {
                return PlatformError{ErrorCode::kReadNoPermission, EACCES};
            }
            return ForwardingFileSystem::resourceValues(url);
        }

      private:
        mutable int m_asked = 0;
    };
    SampleMac mac;
    mac.file(".npm/_cacache/file", "x");
    const SamplePlatform sample(mac);
    DatesRefused refusing{sample.platform.files};
    const auto items = DeveloperCacheFinder::find(withFiles(sample.platform, refusing), Priority::utility);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items.front().lastModified, std::nullopt);
    EXPECT_EQ(items.front().lastModifiedSortKey(), Date::distantPast());
}

// Dependency folders

TEST(DeveloperCacheFinder, DependenciesAreFoundBelowEveryProjectFolder) {
    const Texts expected = {"Desktop/p/node_modules",
                            "Documents/p/node_modules",
                            "Developer/p/node_modules",
                            "Projects/p/node_modules",
                            "PersonalProjects/p/node_modules",
                            "Sites/p/node_modules",
                            "src/p/node_modules",
                            "code/p/node_modules",
                            "repos/p/node_modules",
                            "work/p/node_modules",
                            "dev/p/node_modules",
                            "Code/p/node_modules",
                            "Repos/p/node_modules",
                            "Work/p/node_modules"};
    auto folders = expected;
    folders.insert(folders.end(), {"Music/p/node_modules", "p/node_modules", "Downloads/p/node_modules"});
    EXPECT_EQ(foundAmong(folders), expected) << "in the order of the folders, which all are equally large";
}

TEST(DeveloperCacheFinder, ADependencyFolderIsNeverSafeAndTellsWhatItCosts) {
    const auto modules = dependenciesAt("Projects/shop/node_modules");
    EXPECT_EQ(modules.tool, "npm / yarn / pnpm");
    EXPECT_EQ(modules.kind, "node_modules in shop");
    EXPECT_EQ(modules.consequence, "The shop project won't run until you reinstall its dependencies.");
    EXPECT_FALSE(modules.safeToSweep);
    for (const std::string name : {".venv", "venv"}) {
        const auto python = dependenciesAt("Projects/tidepool/" + name);
        EXPECT_EQ(python.tool, "Python");
        EXPECT_EQ(python.kind, name + " in tidepool");
        EXPECT_EQ(python.consequence, "The tidepool project won't run until you reinstall its dependencies.");
        EXPECT_FALSE(python.safeToSweep);
    }
}

TEST(DeveloperCacheFinder, APartOfAProjectIsToldWithTheProject) {
    EXPECT_EQ(dependenciesAt("Projects/shop/frontend/node_modules").kind, "node_modules in shop/frontend");
    EXPECT_EQ(dependenciesAt("Projects/shop/APP/node_modules").kind, "node_modules in shop/APP");
    EXPECT_EQ(dependenciesAt("Projects/shop/packages/api/node_modules").kind, "node_modules in packages/api");
    for (const std::string part : {"client", "server", "app", "web", "backend", "api", "src", "packages"}) {
        EXPECT_EQ(dependenciesAt("Projects/shop/" + part + "/venv").kind, "venv in shop/" + part);
    }
    EXPECT_EQ(dependenciesAt("Projects/shop/apps/venv").kind, "venv in apps");
}

TEST(DeveloperCacheFinder, DependenciesRightInAProjectFolderAreTolWithIt) {
    EXPECT_EQ(dependenciesAt("Projects/node_modules").kind, "node_modules in Projects");
    EXPECT_EQ(dependenciesAt("src/node_modules").kind, "node_modules in alex/src");
}

TEST(DeveloperCacheFinder, DependenciesInsideDependenciesAreNotReported) {
    EXPECT_THAT(foundAmong({"Projects/shop/node_modules", "Projects/shop/node_modules/a/node_modules",
                            "Projects/shop/.venv/lib/venv"}),
                UnorderedElementsAre("Projects/shop/node_modules", "Projects/shop/.venv"));
}

TEST(DeveloperCacheFinder, WhatIsHiddenOrCalledLibraryOrAPackageIsNotEntered) {
    EXPECT_THAT(foundAmong({"Projects/shop/.git/node_modules", "Projects/.hidden/shop/venv",
                            "Projects/Library/shop/venv", "Projects/Demo.app/Contents/node_modules",
                            "Projects/demo.xcodeproj/venv", "Projects/Plug.bundle/venv",
                            "Projects/library/shop/venv"}),
                ElementsAre("Projects/library/shop/venv"));
}

TEST(DeveloperCacheFinder, AFolderAtTheFifthLevelIsLookedAtByNameAndNothingBelowIt) {
    EXPECT_THAT(foundAmong({"Projects/1/2/3/4/node_modules", "Projects/1/2/3/4/5/node_modules"}),
                ElementsAre("Projects/1/2/3/4/node_modules"));
}

TEST(DeveloperCacheFinder, FilesAndLinksWithTheNamesOfDependencyFoldersAreNone) {
    SampleMac mac;
    mac.tree("Projects/shop/real", kilobytes(20))
        .link("Projects/shop/node_modules", "real")
        .link("Projects/linked", "shop")
        .file("Projects/shop/venv", "x");
    EXPECT_THAT(foundOn(mac), IsEmpty());
}

TEST(DeveloperCacheFinder, AProjectFolderThatIsALinkIsNotWalked) {
    SampleMac mac;
    mac.tree("Elsewhere/shop/node_modules", kilobytes(20)).link("Projects", "Elsewhere");
    EXPECT_THAT(foundOn(mac), IsEmpty());
}

TEST(DeveloperCacheFinder, AFolderThatCannotBeReadIsSkippedAndTheWalkGoesOn) {
    SampleMac mac;
    mac.file("Projects/a/venv/file", "x").file("Projects/b/venv/file", "x").file("Projects/c/venv/file", "x");
    SamplePlatform sample(mac);
    sample.files.deny(FileURL("/Users/alex/Projects/b"));
    EXPECT_THAT(kindsOf(DeveloperCacheFinder::find(sample.platform, Priority::utility)),
                ElementsAre("venv in a", "venv in c"));
}

// What is touched

TEST(DeveloperCacheFinder, NothingBelowAPrunedFolderIsOpened) {
    SampleMac mac;
    mac.file("Projects/shop/src/index.js", "x")
        .file("Projects/shop/node_modules/a/b/index.js", "x")
        .file("Projects/shop/.git/objects/00/file", "x")
        .file("Projects/Library/Caches/file", "x")
        .file("Projects/Demo.app/Contents/Info.plist", "x")
        .file("Projects/1/2/3/4/5/6/file", "x")
        .file("Elsewhere/shop/file", "x");
    const SamplePlatform sample(mac);
    RecordedPlatform recorded(sample.platform);
    EXPECT_EQ(DeveloperCacheFinder::find(recorded.platform, Priority::utility).size(), 1U);
    Texts opened;
    for (const auto& folder : recorded.files.entered()) {
        opened.push_back(folder.path());
    }
    const std::string projects = "/Users/alex/Projects";
    EXPECT_THAT(opened,
                UnorderedElementsAre(projects, projects + "/shop", projects + "/shop/src", projects + "/1",
                                     projects + "/1/2", projects + "/1/2/3", projects + "/1/2/3/4",
                                     // To be measured, once:
                                     projects + "/shop/node_modules", projects + "/shop/node_modules/a",
                                     projects + "/shop/node_modules/a/b"));
}

// Stopping

TEST(DeveloperCacheFinder, AStoppedWalkGivesTheKnownPlacesAndWhatWasFoundSoFar) {
    SampleMac mac;
    mac.tree(".npm/_cacache", kilobytes(40)).file(".m2/repository/file", "x");
    for (const auto* root : {"Desktop", "Documents", "Developer", "Projects"}) {
        mac.file(root + std::string("/shop/venv/file"), "x");
    }
    const SamplePlatform sample(mac);
    RecordedPlatform recorded(sample.platform);
    StopSource source;
    recorded.files.beforeEachEntry([&](const FileURL& url) {
        if (url == FileURL("/Users/alex/Projects/shop")) {
            source.requestStop();
        }
    });
    EXPECT_EQ(DeveloperCacheFinder::find(sample.platform, Priority::utility).size(), 6U);
    const auto items = DeveloperCacheFinder::find(recorded.platform, Priority::utility, source.token());
    EXPECT_THAT(kindsOf(items), ElementsAre("Package cache", "Local repository", "venv in shop",
                                            "venv in shop", "venv in shop"));
    EXPECT_TRUE(std::ranges::is_sorted(items, std::ranges::greater(), &DevCacheItem::bytes));
    for (const auto& folder : recorded.files.entered()) {
        EXPECT_FALSE(folder.path().starts_with("/Users/alex/Projects/")) << "the walk went on";
    }
}

TEST(DeveloperCacheFinder, AStopEndsTheMeasuringOfWhatWasFound) {
    SampleMac mac;
    mac.file("Projects/shop/node_modules/a/file", "x").file("Projects/shop/node_modules/b/file", "x");
    const SamplePlatform sample(mac);
    RecordedPlatform recorded(sample.platform);
    StopSource source;
    recorded.files.beforeEachEntry([&](const FileURL& url) {
        if (url.path().starts_with("/Users/alex/Projects/shop/node_modules/")) {
            source.requestStop();
        }
    });
    EXPECT_THAT(DeveloperCacheFinder::find(recorded.platform, Priority::utility, source.token()), IsEmpty());
    EXPECT_EQ(recorded.files.entered().back(), FileURL("/Users/alex/Projects/shop/node_modules"));
}

// Threads

TEST(DeveloperCacheFinder, AScanInTheBackgroundAsksForOneHelperAndOneThatIsWaitedForForThree) {
    SampleMac mac;
    mac.file(".npm/_cacache/file", "x").file("Projects/shop/venv/file", "x");
    const std::array rows = {std::pair(Priority::background, 1U), std::pair(Priority::utility, 3U),
                             std::pair(Priority::userInitiated, 3U)};
    for (const auto& [priority, helpers] : rows) {
        SamplePlatform sample(mac);
        EXPECT_EQ(DeveloperCacheFinder::find(sample.platform, priority).size(), 2U) << "with none that comes";
        // For the known places, and again for the projects.
        EXPECT_EQ(sample.runner.history(), std::vector<Priority>(2 * helpers, priority));
        sample.runner.runAll();
    }
}

} // namespace
} // namespace quillane
