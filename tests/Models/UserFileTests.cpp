#include "Calendar.h"
#include "UserFile.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using Kind = UserFile::Kind;

UserFile made() {
    return {FileURL("/Users/alex/Downloads/Talk.mov"),
            Kind::video,
            4096,
            9000,
            Date::fromUnix(1'700'000'000),
            false,
            false};
}

TEST(UserFile, TheKindsStandInTheirOrderWithTheirLabels) {
    const std::vector<std::pair<Kind, std::string>> rows = {{Kind::image, "Image"},
                                                            {Kind::video, "Video"},
                                                            {Kind::audio, "Audio"},
                                                            {Kind::pdf, "PDF"},
                                                            {Kind::document, "Document"},
                                                            {Kind::archive, "Archive"},
                                                            {Kind::diskImage, "Disk Image"},
                                                            {Kind::installer, "Installer"},
                                                            {Kind::other, "File"}};
    ASSERT_EQ(rows.size(), kAllUserFileKinds.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllUserFileKinds[i], rows[i].first);
        EXPECT_EQ(rawValue(rows[i].first), rows[i].second);
    }
}

TEST(UserFile, KindsAreOrderedByTheirLabels) {
    auto kinds = std::vector(kAllUserFileKinds.begin(), kAllUserFileKinds.end());
    std::ranges::sort(kinds);
    EXPECT_EQ(kinds, (std::vector{Kind::archive, Kind::audio, Kind::diskImage, Kind::document, Kind::other,
                                  Kind::image, Kind::installer, Kind::pdf, Kind::video}));
}

struct Named {
    const char* name;
    Kind kind;
};

class UserFileKind : public testing::TestWithParam<Named> {};

TEST_P(UserFileKind, IsThatOfTheExtension) {
    EXPECT_EQ(UserFile::kindOf(FileURL("/Users/alex/Downloads").appending(GetParam().name)), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Table, UserFileKind,
    testing::Values(
        Named{"Tool.dmg", Kind::diskImage}, Named{"disc.ISO", Kind::diskImage},
        Named{"a.sparseimage", Kind::diskImage}, Named{"Setup.pkg", Kind::installer},
        Named{"Setup.mpkg", Kind::installer}, Named{"a.jpg", Kind::image}, Named{"a.HEIC", Kind::image},
        Named{"drawing.svg", Kind::image}, Named{"a.mov", Kind::video}, Named{"a.m2v", Kind::video},
        Named{"source.ts", Kind::video}, Named{"a.mp3", Kind::audio}, Named{"a.pdf", Kind::pdf},
        Named{"a.zip", Kind::archive}, Named{"a.tar.gz", Kind::archive}, Named{"a.xlsb", Kind::archive},
        Named{"a.jar", Kind::archive}, Named{"a.txt", Kind::document}, Named{"a.html", Kind::document},
        Named{"a.pptx", Kind::document}, Named{"a.xlsx", Kind::document}, Named{"a.doc", Kind::document},
        Named{"a.docx", Kind::document}, Named{"a.pages", Kind::document}, Named{"a.key", Kind::document},
        Named{"a.odt", Kind::other}, Named{"a.plist", Kind::other}, Named{"a.epub", Kind::other},
        Named{"a.mkv", Kind::other}, Named{"folder.app", Kind::other}, Named{"a.unknown", Kind::other},
        Named{"README", Kind::other}, Named{".txt", Kind::other}));

TEST(UserFile, ItsNameIsTheLastComponentAndItsFolderTellsTheHomeAsATilde) {
    auto file = made();
    EXPECT_EQ(file.name(), "Talk.mov");
    EXPECT_EQ(file.folder(FileURL("/Users/alex")), "~/Downloads");
    file.url = FileURL("/Volumes/Copy/Users/alex/x/Users/alex/a.txt");
    EXPECT_EQ(file.folder(FileURL("/Users/alex")), "/Volumes/Copy~/x~");
    file.url = FileURL("/a.txt");
    EXPECT_EQ(file.folder(FileURL("/Users/alex")), "/");
}

TEST(UserFile, AnUnknownDateSortsAsTheOldestAndCountsNoDays) {
    auto file = made();
    const auto threeDaysLater = file.lastUsed->addingSeconds(3 * 86'400);
    EXPECT_EQ(file.lastUsedSortKey(), *file.lastUsed);
    EXPECT_EQ(file.daysSinceUsed(threeDaysLater, Calendar("GMT")), 3);
    file.lastUsed.reset();
    EXPECT_EQ(file.lastUsedSortKey(), Date::distantPast());
    EXPECT_EQ(file.daysSinceUsed(threeDaysLater, Calendar("GMT")), std::nullopt);
}

TEST(UserFile, EveryFieldCounts) {
    const auto plain = made();
    const auto differs = [&](auto change) {
        auto other = plain;
        change(other);
        return other != plain && std::hash<UserFile>{}(other) != std::hash<UserFile>{}(plain);
    };
    EXPECT_TRUE(differs([](UserFile& other) { other.url = FileURL("/other"); }));
    EXPECT_TRUE(differs([](UserFile& other) { other.kind = Kind::audio; }));
    EXPECT_TRUE(differs([](UserFile& other) { other.bytes = 1; }));
    EXPECT_TRUE(differs([](UserFile& other) { other.logicalBytes = 1; }));
    EXPECT_TRUE(differs([](UserFile& other) { other.lastUsed.reset(); }));
    EXPECT_TRUE(differs([](UserFile& other) { other.isCloudPlaceholder = true; }));
    EXPECT_TRUE(differs([](UserFile& other) { other.installsAnInstalledApp = true; }));
}

} // namespace
} // namespace quillane
