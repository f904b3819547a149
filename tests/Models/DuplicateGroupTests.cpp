#include "DuplicateGroup.h"
#include <gtest/gtest.h>
#include <limits>

namespace quillane {
namespace {

UserFile copyAt(const std::string& path, std::optional<Date> used = std::nullopt) {
    UserFile file;
    file.url = FileURL(path);
    file.lastUsed = used;
    return file;
}

Date day(int number) {
    return Date::fromUnix(number * 86'400, 0);
}

std::string keptOf(std::vector<UserFile> files) {
    const auto keeper = DuplicateGroup{"id", std::move(files), 1}.suggestedKeeper();
    return keeper ? keeper->url.path() : "nothing";
}

TEST(DuplicateGroup, ThreeCopiesOfTenMegabytesWasteTwenty) {
    const DuplicateGroup group{"id", {copyAt("/a"), copyAt("/b"), copyAt("/c")}, 10'000'000};
    EXPECT_EQ(group.count(), 3U);
    EXPECT_EQ(group.wastedBytes(), 20'000'000);
}

TEST(DuplicateGroup, WithoutFilesItHasNoNameNoKeeperAndWastesNothing) {
    const DuplicateGroup group{"id", {}, 10};
    EXPECT_EQ(group.count(), 0U);
    EXPECT_EQ(group.wastedBytes(), 0);
    EXPECT_EQ(group.name(), "");
    EXPECT_EQ(group.suggestedKeeper(), std::nullopt);
}

TEST(DuplicateGroup, ItIsNamedAfterItsFirstFile) {
    EXPECT_EQ((DuplicateGroup{"id", {copyAt("/x/Holiday.mov"), copyAt("/y/b")}, 1}.name()), "Holiday.mov");
}

TEST(DuplicateGroup, TheMostRecentlyUsedCopyShouldStay) {
    EXPECT_EQ(keptOf({copyAt("/short", day(1)), copyAt("/much/longer", day(3)), copyAt("/c", day(2))}),
              "/much/longer");
    EXPECT_EQ(keptOf({copyAt("/never"), copyAt("/much/longer", day(3))}), "/much/longer");
}

TEST(DuplicateGroup, OfCopiesUsedTogetherTheOneWithTheShortestPathShouldStay) {
    EXPECT_EQ(keptOf({copyAt("/longer", day(1)), copyAt("/b", day(1)), copyAt("/long", day(1))}), "/b");
    EXPECT_EQ(keptOf({copyAt("/first", day(1)), copyAt("/other", day(1))}), "/first");
}

TEST(DuplicateGroup, OfCopiesWithoutADateTheOneWithTheShortestPathShouldStay) {
    EXPECT_EQ(keptOf({copyAt("/longer"), copyAt("/b"), copyAt("/long")}), "/b");
}

TEST(DuplicateGroup, PathsAreAsLongAsTheyHaveCharacters) {
    EXPECT_EQ(keptOf({copyAt("/abcd"), copyAt("/e\u0301e\u0301e\u0301")}), "/e\u0301e\u0301e\u0301");
    EXPECT_EQ(keptOf({copyAt("/ab"), copyAt("/\U0001F44D\U0001F3FD")}), "/\U0001F44D\U0001F3FD");
}

TEST(DuplicateGroup, WhatWouldNotFitIsTheLargestCount) {
    constexpr auto kMost = std::numeric_limits<Bytes>::max();
    const DuplicateGroup three{"id", {copyAt("/a"), copyAt("/b"), copyAt("/c")}, kMost / 2 + 1};
    EXPECT_EQ(three.wastedBytes(), kMost);
    EXPECT_EQ(DuplicateGroup::wastedBytesOf({three, three}), kMost);
    EXPECT_EQ(DuplicateGroup::wastedBytesOf({{"a", {copyAt("/a"), copyAt("/b")}, 5}, {"b", {}, 7}}), 5);
    EXPECT_EQ(DuplicateGroup::wastedBytesOf({}), 0);
}

TEST(DuplicateGroup, GroupsAreEqualWhenAllTheirFieldsAre) {
    const DuplicateGroup group{"id", {copyAt("/a"), copyAt("/b")}, 1};
    auto other = group;
    EXPECT_EQ(group, other);
    EXPECT_EQ(std::hash<DuplicateGroup>()(group), std::hash<DuplicateGroup>()(other));
    other.bytesEach = 2;
    EXPECT_NE(group, other);
    other = group;
    other.files.pop_back();
    EXPECT_NE(group, other);
    other = group;
    other.id = "another";
    EXPECT_NE(group, other);
}

} // namespace
} // namespace quillane
