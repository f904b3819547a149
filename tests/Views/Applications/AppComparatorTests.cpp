#include "AppRecords.h"
#include "Applications/AppRow.h"
#include <gtest/gtest.h>

using namespace quillane;
using Key = AppComparator::Key;

namespace {

// In the order of the library: by name.
std::vector<InstalledApp> sample() {
    auto alder = measuredApp("alder 2", 500);
    alder.version = "10.0";
    alder.lastUsed = Date{200};
    auto birch = measuredApp("Alder 10", 900);
    birch.version = "9.1";
    birch.architecture = Architecture::intel;
    auto cedar = measuredApp("Cedar", 500);
    cedar.version = "10.0";
    cedar.lastUsed = Date{100};
    cedar.architecture = Architecture::intel32;
    return {alder, birch, cedar};
}

std::vector<std::string> namesOf(const std::vector<InstalledApp>& apps,
                                 const std::vector<AppComparator>& order) {
    std::vector<AppRecord> records;
    for (const auto& app : apps) {
        records.push_back({&app});
    }
    NameRanks remembered;
    std::vector<std::string> names;
    for (const auto& record : sorted(records, order, remembered)) {
        names.push_back(record.app->name);
    }
    return names;
}

std::vector<std::string> namesBy(const std::vector<AppComparator>& order) {
    return namesOf(sample(), order);
}

using Names = std::vector<std::string>;

} // namespace

TEST(AppComparator, TheTableBeginsWithTheLargest) {
    EXPECT_EQ(namesBy(kInitialAppOrder), (Names{"Alder 10", "alder 2", "Cedar"}));
}

TEST(AppComparator, NamesSortAsTheFinderSortsThem) {
    EXPECT_EQ(namesBy({{Key::name, false}}), (Names{"alder 2", "Alder 10", "Cedar"}));
    EXPECT_EQ(namesBy({{Key::name, true}}), (Names{"Cedar", "Alder 10", "alder 2"}));
}

TEST(AppComparator, EqualSizesKeepTheOrderOfTheNamesInBothDirections) {
    EXPECT_EQ(namesBy({{Key::totalBytes, false}}), (Names{"alder 2", "Cedar", "Alder 10"}));
    EXPECT_EQ(namesBy({{Key::totalBytes, true}}), (Names{"Alder 10", "alder 2", "Cedar"}));
}

TEST(AppComparator, WhatWasNeverUsedIsTheOldest) {
    EXPECT_EQ(namesBy({{Key::lastUsed, false}}), (Names{"Alder 10", "Cedar", "alder 2"}));
}

TEST(AppComparator, ArchitecturesSortByTheirWords) { // "32-bit Intel", "Intel", "Universal"
    EXPECT_EQ(namesBy({{Key::architecture, false}}), (Names{"Cedar", "Alder 10", "alder 2"}));
}

TEST(AppComparator, TheNumbersOfVersionsCompareByValue) {
    EXPECT_EQ(namesBy({{Key::version, false}}), (Names{"Alder 10", "alder 2", "Cedar"}));
    const Names ascending = {"-",      "1",       "1.2", "1.2.1", "1.2.10", "1.18",
                             "1.18b2", "1.18b10", "2",   "10.0",  "v1"};
    std::vector<InstalledApp> apps;
    for (auto version = ascending.rbegin(); version != ascending.rend(); ++version) {
        apps.push_back(measuredApp(*version, 1));
        apps.back().version = *version;
    }
    EXPECT_EQ(namesOf(apps, {{Key::version, false}}), ascending);
}

TEST(AppComparator, ALaterComparatorDecidesTies) {
    EXPECT_EQ(namesBy({{Key::version, false}, {Key::lastUsed, false}}),
              (Names{"Alder 10", "Cedar", "alder 2"}));
}

TEST(AppComparator, WithoutComparatorsTheOrderStays) {
    EXPECT_EQ(namesBy({}), (Names{"alder 2", "Alder 10", "Cedar"}));
    EXPECT_TRUE(namesOf({}, kInitialAppOrder).empty());
}

TEST(AppComparator, TheSizeThatCountsIncludesTheSupportFiles) {
    auto apps = sample();
    apps[2].leftovers = {leftover("/l", "Caches", 10'000)};
    EXPECT_EQ(namesOf(apps, kInitialAppOrder).front(), "Cedar");
}
