#include "VersionNumber.h"
#include <gtest/gtest.h>
#include <string>

using quillane::VersionNumber;

namespace {

std::strong_ordering order(const char* a, const char* b) {
    return *VersionNumber::parse(a) <=> *VersionNumber::parse(b);
}

TEST(VersionNumber, GoesNumberByNumberAndNotLetterByLetter) {
    EXPECT_EQ(order("1.10", "1.9"), std::strong_ordering::greater);
    EXPECT_EQ(order("2", "1.99.99"), std::strong_ordering::greater);
    EXPECT_EQ(order("0.1.0", "0.1.1"), std::strong_ordering::less);
    EXPECT_EQ(order("1.2", "1.2.1"), std::strong_ordering::less);
    EXPECT_EQ(order("999999999", "1000000.0"), std::strong_ordering::greater);
}

TEST(VersionNumber, WhatIsNotWrittenIsZero) {
    EXPECT_EQ(order("1.2", "1.2.0.0"), std::strong_ordering::equal);
    EXPECT_EQ(*VersionNumber::parse("0"), *VersionNumber::parse("0.0"));
    EXPECT_EQ(VersionNumber::parse("1.2.0")->text(), "1.2.0");
}

TEST(VersionNumber, WhatIsNoNumberOfAVersionIsNone) {
    for (const char* text :
         {"",   ".",  "1.",   ".1", "1..2", "v1",  "1.2b", "1.2-1", " 1",         "1 ",           "1.2\n",
          "+1", "-1", "1.-2", "01", "1.02", "1,2", "1e3",  "0x1",   "1234567890", "1.2.3.4.5.6.7"}) {
        EXPECT_EQ(VersionNumber::parse(text), std::nullopt) << text;
    }
    EXPECT_EQ(VersionNumber::parse(std::string_view("1\0", 2)), std::nullopt);
    EXPECT_TRUE(VersionNumber::parse("1.2.3.4.5.6"));
}

} // namespace
