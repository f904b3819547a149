#include "AppFilter.h"

namespace quillane {
namespace {

TEST(AppFilter, TheFiltersStandInTheirOrderWithTheirLabels) {
    const std::vector<std::pair<AppFilter, std::string>> rows = {{AppFilter::all, "All Apps"},
                                                                 {AppFilter::thirdParty, "Third-Party"},
                                                                 {AppFilter::rosetta, "Intel Only"},
                                                                 {AppFilter::unused, "Unused 6 Months"},
                                                                 {AppFilter::large, "Over 500 MB"}};
    ASSERT_EQ(rows.size(), kAllAppFilters.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllAppFilters[i], rows[i].first);
        EXPECT_EQ(rawValue(rows[i].first), rows[i].second);
    }
}

} // namespace
} // namespace quillane
