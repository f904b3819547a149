#include "SweepCategory.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct Row {
    SweepCategory category;
    const char* title;
    const char* symbol;
    const char* description;
};

const std::vector<Row>& rows() {
    static const std::vector<Row> kRows = {
        {SweepCategory::caches, "App Caches", "sparkles",
         "Caches, logs and saved window state from installed apps. Settings and user data are left alone."},
        {SweepCategory::developer, "Developer Caches", "hammer",
         "Build products and package caches that tools rebuild on their own. Project dependencies are never "
         "included."},
        {SweepCategory::orphans, "Orphaned Files", "questionmark.folder",
         "Support files left behind by apps that are no longer installed."},
        {SweepCategory::trash, "Empty the Trash", "trash",
         "Everything already in your Trash, deleted for good."},
        {SweepCategory::apps, "Applications", "square.grid.2x2",
         "Application bundles and the support files that belong to them."},
        {SweepCategory::files, "Files", "doc.on.doc", "Your own files. Nothing here can be regenerated."},
        {SweepCategory::startup, "Startup Items", "power", "Things macOS launches on its own."},
    };
    return kRows;
}

class SweepCategoryWords : public testing::TestWithParam<Row> {};

TEST_P(SweepCategoryWords, AreThoseOfTheTable) {
    const auto& row = GetParam();
    EXPECT_EQ(rawValue(row.category), row.title);
    EXPECT_EQ(symbol(row.category), row.symbol);
    EXPECT_EQ(description(row.category), row.description);
    EXPECT_EQ(sweepCategoryFromRawValue(row.title), row.category);
}

INSTANTIATE_TEST_SUITE_P(Table, SweepCategoryWords, testing::ValuesIn(rows()));

TEST(SweepCategory, AllCategoriesStandInTheOrderOfTheTable) {
    std::vector<SweepCategory> categories;
    for (const auto& row : rows()) {
        categories.push_back(row.category);
    }
    EXPECT_THAT(kAllSweepCategories, testing::ElementsAreArray(categories));
}

TEST(SweepCategory, OtherWordsAreNoCategory) {
    for (const char* words : {"", "caches", "app caches", "Files ", "Startup"}) {
        EXPECT_EQ(sweepCategoryFromRawValue(words), std::nullopt) << words;
    }
}

} // namespace
} // namespace quillane
