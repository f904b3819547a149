#include "Calendar.h"
#include "OrphanGroup.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using Titles = std::vector<std::string>;

OrphanItem item(const std::string& identifier, Bytes bytes, std::optional<Date> modified = std::nullopt) {
    OrphanItem item;
    item.url = FileURL("/Users/alex/Library/Caches/" + identifier);
    item.category = "Caches";
    item.identifier = identifier;
    item.vendor = "com.example";
    item.bytes = bytes;
    item.lastModified = modified;
    return item;
}

OrphanItem itemOf(const std::string& vendor, Bytes bytes) {
    auto made = item(vendor + ".tool", bytes);
    made.vendor = vendor;
    return made;
}

std::string titleOf(const std::vector<std::string>& identifiers) {
    OrphanGroup group{"com.example", {}};
    for (const auto& identifier : identifiers) {
        group.items.push_back(item(identifier, 1));
    }
    return group.title();
}

Date day(int number) {
    return Date::fromUnix(1'700'000'000 + std::int64_t{number} * 86'400);
}

TEST(OrphanGroup, ItemsAreGroupedByVendorAndTheLargestStandFirst) {
    const auto groups = OrphanGroup::grouped(
        {itemOf("com.small", 10), itemOf("com.large", 30), itemOf("com.small", 15), itemOf("com.large", 40)});
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].vendor, "com.large");
    EXPECT_EQ(groups[0].items, (std::vector{itemOf("com.large", 40), itemOf("com.large", 30)}));
    EXPECT_EQ(groups[0].totalBytes(), 70);
    EXPECT_EQ(groups[1].items, (std::vector{itemOf("com.small", 15), itemOf("com.small", 10)}));
}

// As many as make a sort that does not keep equals show it: 16 and fewer stay in order by chance.
TEST(OrphanGroup, ManyItemsOfEqualSizeKeepTheirOrder) {
    std::vector<OrphanItem> items;
    for (int i = 0; i < 60; ++i) {
        items.push_back(item("com.example.tool" + std::to_string(i), i % 3));
    }
    const auto groups = OrphanGroup::grouped(items);
    ASSERT_EQ(groups.size(), 1U);
    std::vector<OrphanItem> expected;
    for (const Bytes bytes : {2, 1, 0}) {
        for (std::size_t i = static_cast<std::size_t>(bytes); i < items.size(); i += 3) {
            expected.push_back(items[i]);
        }
    }
    EXPECT_EQ(groups.front().items, expected);
}

TEST(OrphanGroup, ManyGroupsOfEqualSizeStandInTheOrderOfTheirVendors) {
    std::vector<OrphanItem> items;
    std::vector<std::string> vendors;
    for (int i = 10; i < 70; ++i) {
        vendors.push_back("com.v" + std::to_string(i));
        items.push_back(itemOf(vendors.back(), 5));
    }
    std::vector<std::string> grouped;
    for (const auto& group : OrphanGroup::grouped(items)) {
        grouped.push_back(group.vendor);
    }
    EXPECT_EQ(grouped, vendors);
}

TEST(OrphanGroup, NoItemsMakeNoGroups) {
    EXPECT_TRUE(OrphanGroup::grouped({}).empty());
    EXPECT_EQ(OrphanGrouping::count({}), 0U);
}

TEST(OrphanGroup, GroupsAreCountedByVendorToTheByte) {
    EXPECT_EQ(OrphanGrouping::count(
                  {itemOf("com.a", 1), itemOf("com.b", 1), itemOf("com.a", 2), itemOf("com.A", 1)}),
              3U);
}

TEST(OrphanGroup, ItemsOfEqualSizeKeepTheirOrder) {
    std::vector<OrphanItem> items;
    for (int i = 0; i < 20; ++i) {
        items.push_back(item("com.example." + std::to_string(i), i % 2));
    }
    const auto group = OrphanGroup::grouped(items).front();
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(group.items[i], items[2 * i + 1]);
        EXPECT_EQ(group.items[i + 10], items[2 * i]);
    }
}

TEST(OrphanGroup, TheOrderOfTheItemsMakesNoDifferenceToTheGroups) {
    const std::vector items = {itemOf("a.a", 5), itemOf("b.b", 5), itemOf("c.c", 5)};
    EXPECT_EQ(OrphanGroup::grouped(items), OrphanGroup::grouped({items[2], items[0], items[1]}));
}

TEST(OrphanGroup, TheTitleIsTheIdentifierThatMostOthersExtend) {
    EXPECT_EQ(titleOf({"com.example.tool", "com.example.tool.helper", "com.example.other"}),
              "com.example.tool");
    EXPECT_EQ(titleOf({"com.example.other", "com.example.tool.helper", "com.example.tool"}),
              "com.example.tool");
}

TEST(OrphanGroup, OnATieTheEarliestGivesTheTitle) {
    EXPECT_EQ(titleOf({"com.example.b", "com.example.a"}), "com.example.b");
}

TEST(OrphanGroup, TheSameIdentifierTwiceCountsTwice) {
    EXPECT_EQ(titleOf({"com.example.a", "com.example.b", "com.example.b"}), "com.example.b");
}

TEST(OrphanGroup, ALongerWordIsNoDescendantAndCaseCounts) {
    EXPECT_EQ(titleOf({"com.example.a", "com.example.tool", "com.example.toolbox"}), "com.example.a");
    EXPECT_EQ(titleOf({"com.example.a", "com.example.tool", "com.example.Tool.x"}), "com.example.a");
}

TEST(OrphanGroup, AGroupWithoutItemsIsCalledByItsVendor) {
    EXPECT_EQ((OrphanGroup{"com.example", {}}).title(), "com.example");
}

TEST(OrphanGroup, TheLatestKnownDateIsTheGroups) {
    const OrphanGroup group{
        "com.example",
        {item("a.b.c", 1, day(3)), item("a.b.d", 1), item("a.b.e", 1, day(7)), item("a.b.f", 1, day(5))}};
    EXPECT_EQ(group.lastModified(), day(7));
    EXPECT_EQ(group.lastModifiedSortKey(), day(7));
    EXPECT_EQ(group.daysSinceModified(day(10), Calendar("GMT")), 3);
}

TEST(OrphanGroup, AGroupWithoutDatesSortsAsTheOldest) {
    const OrphanGroup group{"com.example", {item("a.b.c", 1)}};
    EXPECT_EQ(group.lastModified(), std::nullopt);
    EXPECT_EQ(group.lastModifiedSortKey(), Date::distantPast());
    EXPECT_EQ(group.daysSinceModified(day(10), Calendar("GMT")), std::nullopt);
}

TEST(OrphanGroup, OneItemOfAnAdministratorMakesTheGroupOne) {
    OrphanGroup group{"com.example", {item("a.b.c", 1), item("a.b.d", 1)}};
    EXPECT_FALSE(group.requiresAdmin());
    group.items.back().requiresAdmin = true;
    EXPECT_TRUE(group.requiresAdmin());
}

TEST(OrphanItem, EveryFieldCounts) {
    const auto plain = item("a.b.c", 1, day(1));
    const auto differs = [&](auto change) {
        auto other = plain;
        change(other);
        return other != plain && std::hash<OrphanItem>{}(other) != std::hash<OrphanItem>{}(plain);
    };
    EXPECT_TRUE(differs([](OrphanItem& other) { other.url = FileURL("/other"); }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.category = "Logs"; }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.identifier = "A.b.c"; }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.vendor = "a.b"; }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.bytes = 2; }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.lastModified.reset(); }));
    EXPECT_TRUE(differs([](OrphanItem& other) { other.requiresAdmin = true; }));
}

} // namespace
} // namespace quillane
