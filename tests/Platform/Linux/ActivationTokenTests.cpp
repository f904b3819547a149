#include "ActivationToken.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using ActivationToken::endOfStart;
using ActivationToken::timeOf;

TEST(ActivationToken, ATokenOfX11TellsItsTimeAtItsEnd) {
    EXPECT_EQ(timeOf("gnome-shell/Quillane/1234-5-host_TIME123456"), 123'456U);
    EXPECT_EQ(timeOf("a_TIME1_TIME2"), 2U);
    EXPECT_EQ(timeOf("_TIME4294967295"), 4'294'967'295U);
}

TEST(ActivationToken, WhatIsNoTimeIsNone) {
    for (const char* token : {"", "_TIME0", "0123-4567-89ab", "x_TIME", "x_TIME-1", "x_TIME12x", "x_TIME 12",
                              "x_TIME4294967296", "x_time12", "TIME12"}) {
        EXPECT_EQ(timeOf(token), std::nullopt) << token;
    }
}

TEST(ActivationToken, TheEndOfAStartNamesItsToken) {
    EXPECT_EQ(endOfStart("host-1-quillane_TIME12"), R"(remove: ID="host-1-quillane_TIME12")");
}

TEST(ActivationToken, WhatStandsInATokenEndsNoOtherStart) {
    EXPECT_EQ(endOfStart(R"(a b" ID="c\)"), R"(remove: ID="a b\" ID=\"c\\")");
}

TEST(ActivationToken, WhatIsNoTokenEndsNothing) {
    EXPECT_EQ(endOfStart(""), "");
    EXPECT_EQ(endOfStart(std::string_view("a\0b", 3)), "");
}

} // namespace
} // namespace quillane
