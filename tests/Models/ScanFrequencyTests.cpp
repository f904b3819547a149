#include "ScanFrequency.h"
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quillane {
namespace {

TEST(ScanFrequency, TheChoicesStandInTheirOrderWithTheirHoursAndLabels) {
    struct Row {
        ScanFrequency frequency;
        std::int64_t hours;
        std::string label;
    };
    const std::vector<Row> rows = {{ScanFrequency::everySixHours, 6, "Every 6 hours"},
                                   {ScanFrequency::daily, 24, "Daily"},
                                   {ScanFrequency::weekly, 168, "Weekly"}};
    ASSERT_EQ(rows.size(), kAllScanFrequencies.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kAllScanFrequencies[i], rows[i].frequency);
        EXPECT_EQ(rawValue(rows[i].frequency), rows[i].hours);
        EXPECT_EQ(label(rows[i].frequency), rows[i].label);
    }
}

} // namespace
} // namespace quillane
