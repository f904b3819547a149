#include "Calendar.h"
#include "DevCacheItem.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

DevCacheItem made() {
    return {FileURL("/Users/alex/.npm/_cacache"),
            "npm",
            "Package cache",
            5,
            Date::fromUnix(1'700'000'000),
            true,
            "Packages are re-fetched on the next install."};
}

TEST(DevCacheItem, AnUnknownDateSortsAsTheOldestAndCountsNoDays) {
    auto item = made();
    const auto threeDaysLater = item.lastModified->addingSeconds(3 * 86'400);
    EXPECT_EQ(item.lastModifiedSortKey(), *item.lastModified);
    EXPECT_EQ(item.daysSinceModified(threeDaysLater, Calendar("GMT")), 3);
    item.lastModified.reset();
    EXPECT_EQ(item.lastModifiedSortKey(), Date::distantPast());
    EXPECT_EQ(item.daysSinceModified(threeDaysLater, Calendar("GMT")), std::nullopt);
}

TEST(DevCacheItem, WhatACleanupIncludesSortsBeforeTheRest) {
    auto item = made();
    EXPECT_EQ(item.sweepSortKey(), 0);
    item.safeToSweep = false;
    EXPECT_EQ(item.sweepSortKey(), 1);
}

TEST(DevCacheItem, EveryFieldCounts) {
    const auto plain = made();
    const auto differs = [&](auto change) {
        auto other = plain;
        change(other);
        return other != plain && std::hash<DevCacheItem>{}(other) != std::hash<DevCacheItem>{}(plain);
    };
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.url = FileURL("/other"); }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.tool = "pip"; }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.kind = "Wheel cache"; }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.bytes = 6; }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.lastModified.reset(); }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.safeToSweep = false; }));
    EXPECT_TRUE(differs([](DevCacheItem& other) { other.consequence = ""; }));
}

} // namespace
} // namespace quillane
