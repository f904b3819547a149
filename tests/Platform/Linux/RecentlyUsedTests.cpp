#include "PosixFileSystem.h"
#include "RecentlyUsed.h"
#include "RecentlyUsedFiles.h"
#include "RecordingFileSystem.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

constexpr Date kSecondOfJanuary = Date::fromUnix(1'767'323'045); // 2026-01-02 03:04:05 UTC

std::string bookmark(const std::string& attributes) {
    return "<bookmark " + attributes + "><info><metadata owner=\"x\"/></info></bookmark>";
}
std::string xbel(const std::string& bookmarks) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xbel version=\"1.0\">" + bookmarks + "</xbel>\n";
}
// The date of "/a", registered with these attributes.
std::optional<Date> dateOf(const std::string& attributes) {
    const auto dates = RecentlyUsed::parse(xbel(bookmark("href=\"file:///a\" " + attributes)));
    const auto found = dates.find(FileURL("/a"));
    return found == dates.end() ? std::nullopt : std::optional(found->second);
}

TEST(RecentlyUsed, TheLaterOfModifiedAndVisitedCounts) {
    const std::string early = "2025-12-31T23:59:59Z";
    const std::string late = "2026-01-02T03:04:05Z";
    EXPECT_EQ(dateOf("modified=\"" + late + "\" visited=\"" + early + "\""), kSecondOfJanuary);
    EXPECT_EQ(dateOf("modified=\"" + early + "\" visited=\"" + late + "\""), kSecondOfJanuary);
    EXPECT_EQ(dateOf("modified=\"" + late + "\""), kSecondOfJanuary);
    EXPECT_EQ(dateOf("visited=\"" + late + "\" modified=\"nonsense\""), kSecondOfJanuary);
    EXPECT_EQ(dateOf("added=\"" + late + "\""), std::nullopt);
}

TEST(RecentlyUsed, AFractionOfAnyLengthCountsNothing) {
    for (const char* date : {"2026-01-02T03:04:05.1Z", "2026-01-02T03:04:05.123456789012Z"}) {
        EXPECT_EQ(dateOf("visited=\"" + std::string(date) + "\""), kSecondOfJanuary) << date;
    }
}

TEST(RecentlyUsed, WhatIsNoDateIsNone) {
    for (const char* date :
         {"", "Z", "2026-01-02", "2026-01-02T03:04:05", "2026-13-02T03:04:05Z", "2026-02-30T03:04:05Z",
          "2026-01-02T24:04:05Z", "2026-01-02T03:60:05Z", "2026-01-02T03:04:61Z", "2026-01-02T03:04:05.xZ",
          "2026-01-02T03:04:05ZZ", "-026-01-02T03:04:05Z", "2026-01-02T03:04Z", "2026-1-2T3:4:5Z"}) {
        EXPECT_EQ(dateOf("visited=\"" + std::string(date) + "\""), std::nullopt) << date;
    }
}

TEST(RecentlyUsed, FilesAreKnownByTheirPathsAndOthersNotAtAll) {
    const std::string visited = "\" visited=\"2026-01-02T03:04:05Z\"";
    const auto dates = RecentlyUsed::parse(
        xbel(bookmark("href=\"file:///home/me/a%20b%C3%A9&amp;c.txt" + visited) +
             bookmark("href=\"https://example.com/x" + visited) + bookmark(visited.substr(2))));
    ASSERT_EQ(dates.size(), 1U);
    EXPECT_TRUE(dates.contains(FileURL("/home/me/a b\u00E9&c.txt")));
}

TEST(RecentlyUsed, OfSeveralEntriesOfOneFileTheLatestCounts) {
    const auto dates =
        RecentlyUsed::parse(xbel(bookmark("href=\"file:///a\" visited=\"2026-01-02T03:04:05Z\"") +
                                 bookmark("href=\"file:///a\" visited=\"2020-01-02T03:04:05Z\"")));
    EXPECT_EQ(dates.at(FileURL("/a")), kSecondOfJanuary);
}

TEST(RecentlyUsed, ATextThatBreaksOffTellsItsBeginning) {
    const auto text = xbel(bookmark("href=\"file:///a\" visited=\"2026-01-02T03:04:05Z\"") +
                           bookmark("href=\"file:///b\" visited=\"2026-01-02T03:04:05Z\""));
    const auto dates = RecentlyUsed::parse(text.substr(0, text.size() / 2 + 20));
    EXPECT_TRUE(dates.contains(FileURL("/a")));
    EXPECT_FALSE(dates.contains(FileURL("/b")));
}

TEST(RecentlyUsed, WhatIsBeyondTheLimitsIsNotRead) {
    const auto one = bookmark("href=\"file:///a\" visited=\"2026-01-02T03:04:05Z\"");
    EXPECT_EQ(RecentlyUsed::parse(xbel(one) + std::string(1'000, ' ')).size(), 1U);
    EXPECT_TRUE(RecentlyUsed::parse(xbel(one) + std::string(RecentlyUsed::kMostBytes, ' ')).empty());
    std::string tags;
    for (std::size_t i = 0; i < RecentlyUsed::kMostTags; ++i) {
        tags += "<a/>";
    }
    EXPECT_TRUE(RecentlyUsed::parse(xbel(one + tags)).empty());
}

class RecentlyUsedRegister : public testing::Test {
  protected:
    void registerVisit(const std::string& date) {
        folder.file("register", xbel(bookmark("href=\"file:///a\" visited=\"" + date + "\"")));
    }

    TemporaryFolder folder;
    PosixFileSystem disk{folder.path(), FileURL("/")};
    RecordingFileSystem files{disk};
    RecentlyUsedFiles metadata{files, FileURL("/register")};
};

TEST_F(RecentlyUsedRegister, TellsTheLastUseOfAFileAndNothingOfOthers) {
    registerVisit("2026-01-02T03:04:05Z");
    EXPECT_EQ(metadata.lastUsed(FileURL("/a")), kSecondOfJanuary);
    EXPECT_EQ(metadata.lastUsed(FileURL("/b")), std::nullopt);
}

TEST_F(RecentlyUsedRegister, IsReadOnceAndAgainWhenItHasChanged) {
    registerVisit("2020-01-02T03:04:05.5Z");
    for (int i = 0; i < 5; ++i) {
        EXPECT_NE(metadata.lastUsed(FileURL("/a")), std::nullopt);
    }
    EXPECT_EQ(files.calls(FileCall::read).size(), 1U);
    registerVisit("2026-01-02T03:04:05Z"); // of another length, whatever the clock of the disk
    EXPECT_EQ(metadata.lastUsed(FileURL("/a")), kSecondOfJanuary);
    folder.remove("register");
    EXPECT_EQ(metadata.lastUsed(FileURL("/a")), std::nullopt);
}

TEST_F(RecentlyUsedRegister, WhatIsNoFileIsNotReadAndHoldsNobody) {
    folder.fifo("register");
    EXPECT_EQ(metadata.lastUsed(FileURL("/a")), std::nullopt);
}

} // namespace
} // namespace quillane
