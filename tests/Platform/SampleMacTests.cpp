// The sample Mac must hold what it declares, or the tests over it would prove nothing.
#include "SamplePlatform.h"
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

const ExpectedApp* find(const std::vector<ExpectedApp>& apps, const std::string& path) {
    const auto found = std::ranges::find(apps, path, &ExpectedApp::path);
    return found == apps.end() ? nullptr : &*found;
}

std::string readAll(const SamplePlatform& sample, const std::string& path) {
    return sample.volume.read(FileURL(path), 1'000'000).valueOr("unreadable");
}

TEST(SampleMac, AnApplicationOccupiesAtLeastItsDeclaredSize) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").size(kilobytes(300));
    const SamplePlatform sample(mac);

    const auto apps = sample.expectedApplications();

    ASSERT_EQ(apps.size(), 1U);
    EXPECT_GE(apps[0].bundleBytes, kilobytes(300));
    EXPECT_LT(apps[0].bundleBytes, kilobytes(300) + 10 * 4096);
}

TEST(SampleMac, ASparseFileOccupiesNothing) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").sparseFile(megabytes(500));
    const SamplePlatform sample(mac);

    EXPECT_LT(sample.expectedApplications().at(0).bundleBytes, kilobytes(50));
    EXPECT_EQ(fs::file_size(sample.disk.at("/Applications/Tool.app/Contents/Resources/Image.sparse")),
              static_cast<std::uintmax_t>(megabytes(500)));
}

TEST(SampleMac, SupportFilesLieWhereTheyAreDeclaredAndOccupyTheirSize) {
    SampleMac mac;
    mac.app("/Applications/Tool.app")
        .identifier("com.example.tool")
        .support("Library/Caches/com.example.tool", kilobytes(80))
        .supportFile("/Library/LaunchDaemons/com.example.tool.plist", kilobytes(8));
    const SamplePlatform sample(mac);

    const auto leftovers = sample.expectedApplications().at(0).leftovers;

    ASSERT_EQ(leftovers.size(), 2U);
    EXPECT_EQ(leftovers[0].path, "/Users/alex/Library/Caches/com.example.tool");
    EXPECT_EQ(leftovers[0].category, "Caches");
    EXPECT_TRUE(leftovers[0].isCache);
    EXPECT_FALSE(leftovers[0].requiresAdmin);
    EXPECT_GE(leftovers[0].bytes, kilobytes(80));
    EXPECT_TRUE(fs::is_directory(sample.disk.at(leftovers[0].path)));
    EXPECT_EQ(leftovers[1].category, "Launch Daemon");
    EXPECT_TRUE(leftovers[1].requiresAdmin);
    EXPECT_TRUE(fs::is_regular_file(sample.disk.at(leftovers[1].path)));
}

TEST(SampleMac, DatesAreToldFromItsOwnNow) {
    SampleMac mac;
    mac.app("/Applications/Opened.app").lastUsed(daysAgo(3));
    mac.app("/Applications/Unopened.app").modified(daysAgo(30)).size(kilobytes(20));
    const SamplePlatform sample(mac);

    EXPECT_EQ(sample.clock.now(), SampleMac::kNow);
    EXPECT_EQ(sample.metadata.lastUsed(FileURL("/Applications/Opened.app")), mac.date(daysAgo(3)));
    EXPECT_EQ(sample.metadata.lastUsed(FileURL("/Applications/Unopened.app")), std::nullopt);
    EXPECT_EQ(sample.volume.resourceValues(FileURL("/Applications/Unopened.app"))->contentModified,
              mac.date(daysAgo(30)));
}

TEST(SampleMac, ABundleSeenThroughALinkIsExpectedThereAndOccupiesNothing) {
    SampleMac mac;
    mac.app("/elsewhere/Tool.app").size(kilobytes(100)).seenThroughLink("/Applications/Tool.app");
    const SamplePlatform sample(mac);

    const auto apps = sample.expectedApplications();

    ASSERT_EQ(apps.size(), 1U);
    EXPECT_EQ(apps[0].path, "/Applications/Tool.app");
    EXPECT_EQ(apps[0].bundleBytes, 0);
    EXPECT_TRUE(sample.volume.exists(FileURL("/Applications/Tool.app/Contents/Info.plist")));
}

TEST(SampleMac, WhatMustNotBeListedIsOnTheDiskAndNotExpected) {
    SampleMac mac;
    mac.app(".Trash/Old.app").notListed();
    const SamplePlatform sample(mac);

    EXPECT_TRUE(sample.expectedApplications().empty());
    EXPECT_TRUE(sample.volume.exists(FileURL("/Users/alex/.Trash/Old.app/Contents/Info.plist")));
    EXPECT_EQ(mac.spotlightOutput(), "/Users/alex/.Trash/Old.app\n");
}

TEST(SampleMac, AHelperIsInTheIndexAndNotExpected) {
    SampleMac mac;
    mac.app("/Applications/Outer.app").helper("Inner");
    const SamplePlatform sample(mac);

    EXPECT_EQ(mac.spotlightOutput(),
              "/Applications/Outer.app\n/Applications/Outer.app/Contents/Frameworks/Inner.app\n");
    EXPECT_TRUE(sample.volume.exists(
        FileURL("/Applications/Outer.app/Contents/Frameworks/Inner.app/Contents/Info.plist")));
    EXPECT_EQ(sample.expectedApplications().size(), 1U);
}

TEST(SampleMac, AnApplicationOutsideTheIndexIsNotInTheAnswer) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").outsideTheIndex();
    EXPECT_EQ(mac.spotlightOutput(), "");
}

TEST(SampleMac, TheSameDeclarationCanBeLaidTwice) {
    const auto mac = SampleMac::manyApplications(3);
    const SamplePlatform first(mac);
    const SamplePlatform second(mac);
    EXPECT_EQ(first.expectedApplications(), second.expectedApplications());
}

TEST(SampleMac, ManyApplicationsAreAsManyAsAskedFor) {
    const SamplePlatform sample(SampleMac::manyApplications(7));
    const auto apps = sample.expectedApplications();
    ASSERT_EQ(apps.size(), 7U);
    EXPECT_EQ(apps[0].leftovers.size(), 2U);
    EXPECT_GE(apps[0].bundleBytes, kilobytes(64));
}

TEST(SampleMac, TheSmallOneHoldsTheCastAndEveryOddCaseInAFewMegabytes) {
    const SamplePlatform sample(SampleMac::small());
    const auto apps = sample.expectedApplications();

    const auto* tessel = find(apps, "/Applications/Tessel Studio.app");
    ASSERT_NE(tessel, nullptr);
    EXPECT_EQ(tessel->architecture, Architecture::intel);
    EXPECT_EQ(tessel->leftovers.size(), 6U);
    const auto* northlight = find(apps, "/Applications/Northlight RAW.app");
    ASSERT_NE(northlight, nullptr);
    EXPECT_TRUE(northlight->isStore);
    for (const auto architecture : kAllArchitectures) {
        EXPECT_TRUE(std::ranges::count(apps, architecture, &ExpectedApp::architecture) > 0)
            << rawValue(architecture);
    }
    for (const auto source : kAllAppSources) {
        EXPECT_TRUE(std::ranges::count(apps, source, &ExpectedApp::source) > 0) << rawValue(source);
    }
    EXPECT_EQ(std::ranges::count(apps, "Tallow", &ExpectedApp::name), 2);
    EXPECT_EQ(std::ranges::count(apps, "", &ExpectedApp::name), 1);
    EXPECT_LT(allocatedOnDisk(sample.disk.path()), megabytes(10));
}

TEST(SampleMac, IconsArePicturesInTheFormOfThePlatform) {
    SampleMac mac;
    mac.app("/Applications/Tool.app").icon(0x3457D5, SampleIcon::Shape::star);
    const SamplePlatform sample(mac);

    const auto icon = readAll(sample, "/Applications/Tool.app/Contents/Resources/AppIcon.icns");

    EXPECT_TRUE(icon.starts_with("icns"));
    EXPECT_NE(icon.find("icp5"), std::string::npos);
    EXPECT_NE(icon.find("ic07"), std::string::npos);
    EXPECT_NE(icon.find("\x89PNG\r\n\x1a\n"), std::string::npos);
    EXPECT_NE(readAll(sample, "/Applications/Tool.app/Contents/Info.plist").find("CFBundleIconFile"),
              std::string::npos);
}

TEST(AllocatedOnDisk, CountsHiddenFilesAndEachNameOfAFileAndFollowsNoLink) {
    TemporaryFolder disk;
    disk.allocated("big", 40'960).allocated("box/.hidden", 8'192).hardLink("box/again", "box/.hidden");
    disk.link("box/link", "../big");

    EXPECT_EQ(allocatedOnDisk(disk.at("box")), 2 * 8'192);
    EXPECT_EQ(allocatedOnDisk(disk.at("box/link")), 0);
    EXPECT_EQ(allocatedOnDisk(disk.at("big")), 40'960);
    EXPECT_EQ(allocatedOnDisk(disk.at("missing")), 0);
}

} // namespace
} // namespace quillane
