#include "DescriptorLimit.h"
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quillane {
namespace {

// Puts back what the process had.
class DescriptorLimitTest : public testing::Test {
  protected:
    DescriptorLimitTest() { ::getrlimit(RLIMIT_NOFILE, &m_before); }
    ~DescriptorLimitTest() override { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    void begin(rlim_t soft) {
        const rlimit limit{soft, m_before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
    static rlim_t now() {
        rlimit limit{};
        ::getrlimit(RLIMIT_NOFILE, &limit);
        return limit.rlim_cur;
    }
    rlim_t most() const { return m_before.rlim_max; }

  private:
    rlimit m_before{};
};

TEST_F(DescriptorLimitTest, AFewBecomeWhatIsWanted) {
    begin(200);
    EXPECT_EQ(DescriptorLimit::raise(300), 300U);
    EXPECT_EQ(now(), 300U);
}

TEST_F(DescriptorLimitTest, ManyStay) {
    begin(300);
    EXPECT_EQ(DescriptorLimit::raise(200), 300U);
    EXPECT_EQ(now(), 300U);
}

TEST_F(DescriptorLimitTest, WhatTheSystemDoesNotLetUsHaveIsNotAskedFor) {
    if (most() == RLIM_INFINITY) {
        const rlimit limit{200, 250}; // for good: the administrator alone raises it again
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        EXPECT_EQ(DescriptorLimit::raise(300), 250U);
        return;
    }
    begin(200);
    EXPECT_EQ(DescriptorLimit::raise(static_cast<std::size_t>(most()) + 1), most());
    EXPECT_EQ(now(), most());
}

} // namespace
} // namespace quillane
