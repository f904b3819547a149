#include "FilesMode.h"
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

TEST(FilesMode, TheLensesStandInTheirOrderWithTheirLabels) {
    const std::vector<std::pair<FilesMode, std::string>> rows = {{FilesMode::large, "Large & Old"},
                                                                 {FilesMode::screenshots, "Screenshots"},
                                                                 {FilesMode::installers, "Installers"},
                                                                 {FilesMode::search, "Search"}};
    ASSERT_EQ(rows.size(), kAllFilesModes.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllFilesModes[i], rows[i].first);
        EXPECT_EQ(rawValue(rows[i].first), rows[i].second);
    }
}

} // namespace
} // namespace quillane
