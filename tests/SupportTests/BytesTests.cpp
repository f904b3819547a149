#include "Bytes.h"
#include <limits>

namespace quillane {
namespace {

constexpr Bytes kMost = std::numeric_limits<Bytes>::max();
constexpr Bytes kLeast = std::numeric_limits<Bytes>::min();

TEST(Bytes, ASumReachesBothEndsOfTheRange) {
    EXPECT_EQ(checkedSum(kMost - 1, 1), kMost);
    EXPECT_EQ(checkedSum(kLeast + 1, -1), kLeast);
    EXPECT_EQ(checkedSum(kMost, kLeast), -1);
}

TEST(BytesDeathTest, ASumBeyondTheRangeStopsTheProcess) {
    EXPECT_DEATH(checkedSum(kMost, 1), "");
    EXPECT_DEATH(checkedSum(kLeast, -1), "");
}

TEST(Bytes, TheSumOfNothingIsZero) {
    const std::vector<Bytes> none;
    EXPECT_EQ(sumOfBytes(none, [](Bytes bytes) { return bytes; }), 0);
}

TEST(Bytes, ASumTakesEveryElement) {
    const std::vector<std::pair<std::string, Bytes>> sizes = {{"a", 1}, {"b", 20}, {"c", 300}};
    EXPECT_EQ(sumOfBytes(sizes, [](const auto& entry) { return entry.second; }), 321);
}

TEST(BytesDeathTest, ASumOfElementsBeyondTheRangeStopsTheProcess) {
    const std::vector<Bytes> sizes = {kMost, 0, 1};
    EXPECT_DEATH(sumOfBytes(sizes, [](Bytes bytes) { return bytes; }), "");
}

} // namespace
} // namespace quillane
