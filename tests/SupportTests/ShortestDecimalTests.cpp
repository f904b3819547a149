#include "ShortestDecimal.h"
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quillane {
namespace {

struct Case {
    double value;
    const char* fixed;
    const char* scientific;
};

TEST(ShortestDecimal, LaysTheSameDigitsOutBothWays) {
    for (const auto& [value, fixed, scientific] :
         {Case{0, "0", "0e+00"}, Case{-0.0, "-0", "-0e+00"}, Case{1, "1", "1e+00"},
          Case{-120, "-120", "-1.2e+02"}, Case{0.05, "0.05", "5e-02"}, Case{1234.5, "1234.5", "1.2345e+03"},
          Case{0.1, "0.1", "1e-01"}, Case{1e16, "10000000000000000", "1e+16"},
          Case{1.5e-7, "0.00000015", "1.5e-07"}, Case{-1.25e100, nullptr, "-1.25e+100"},
          Case{5e-324, nullptr, "5e-324"},
          Case{std::numeric_limits<double>::max(), nullptr, "1.7976931348623157e+308"}}) {
        if (fixed != nullptr) {
            EXPECT_EQ(ShortestDecimal(value).fixed(), fixed);
        }
        EXPECT_EQ(ShortestDecimal(value).scientific(), scientific);
    }
}

TEST(ShortestDecimal, OfTwoTextsAsLongAsEachOtherTheOneWithoutExponentIsTaken) {
    EXPECT_EQ(ShortestDecimal(1e5).shorter(), "1e+05");
    EXPECT_EQ(ShortestDecimal(1e4).shorter(), "10000"); // "1e+04" is as long
    EXPECT_EQ(ShortestDecimal(0.0001).shorter(), "1e-04");
    EXPECT_EQ(ShortestDecimal(0.001).shorter(), "0.001"); // and so is "1e-03"
}

// Whatever the bits.
TEST(ShortestDecimal, ReadsBackAsTheSameNumber) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20'000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) {
            continue;
        }
        const ShortestDecimal decimal(value);
        ASSERT_EQ(std::strtod(decimal.fixed().c_str(), nullptr), value) << decimal.scientific();
        ASSERT_EQ(std::strtod(decimal.scientific().c_str(), nullptr), value) << decimal.scientific();
        ASSERT_LE(decimal.scientific().size(), std::size_t{24});
    }
}

} // namespace
} // namespace quillane
