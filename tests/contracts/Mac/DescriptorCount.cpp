// Each test of this program leaves as many descriptors open as it found.
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>

namespace {

class DescriptorCount final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override { m_before = count(); }
    void OnTestEnd(const testing::TestInfo& test) override {
        EXPECT_EQ(count(), m_before) << "left open by " << test.test_suite_name() << "." << test.name();
    }
    static std::ptrdiff_t count() {
        return std::distance(std::filesystem::directory_iterator("/dev/fd"),
                             std::filesystem::directory_iterator());
    }

    std::ptrdiff_t m_before = 0;
};

[[maybe_unused]] const bool kIsCounted = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new DescriptorCount);
    return true;
}();

} // namespace
