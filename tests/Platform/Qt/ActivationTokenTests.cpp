#include "ActivationToken.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

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

} // namespace
} // namespace quillane
