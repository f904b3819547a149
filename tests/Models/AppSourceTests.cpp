#include "AppSource.h"
#include <algorithm>

namespace quillane {
namespace {

TEST(AppSource, EachHasItsWordsAndIsFoundByThem) {
    const std::vector<std::pair<AppSource, std::string>> rows = {{AppSource::system, "System"},
                                                                 {AppSource::applications, "Applications"},
                                                                 {AppSource::userApplications, "User"},
                                                                 {AppSource::other, "Other"}};
    ASSERT_EQ(rows.size(), kAllAppSources.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllAppSources[i], rows[i].first);
        EXPECT_EQ(rawValue(rows[i].first), rows[i].second);
        EXPECT_EQ(appSourceFromRawValue(rows[i].second), rows[i].first);
    }
}

TEST(AppSource, UnknownWordsAreNoSource) {
    for (const char* words : {"", "system", "User Applications"}) {
        EXPECT_EQ(appSourceFromRawValue(words), std::nullopt) << words;
    }
}

TEST(AppSource, TheOrderIsThatOfTheWords) {
    auto sorted = kAllAppSources;
    std::ranges::sort(sorted, std::less<>());
    EXPECT_THAT(sorted, testing::ElementsAre(AppSource::applications, AppSource::other, AppSource::system,
                                             AppSource::userApplications));
}

} // namespace
} // namespace quillane
