#include "PrivateBytes.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

bool everything(std::int32_t /*character*/) {
    return true;
}

bool noTabs(std::int32_t character) {
    return character != '\t';
}

TEST(PrivateBytes, TextStaysAsItIs) {
    for (const std::string text : {"", "a\tb", "é\U0001F4A9", "\U0010FDFF\U0010FF00"}) {
        EXPECT_EQ(PrivateBytes::written(text, everything), text);
        EXPECT_EQ(PrivateBytes::restored(text, everything), text);
    }
}

TEST(PrivateBytes, WhatIsNoTextOrCantBeHeldIsWrittenByteByByte) {
    EXPECT_EQ(PrivateBytes::written("a\xff\tb", everything), "a\U0010FEFF\tb");
    EXPECT_EQ(PrivateBytes::written("a\xff\tb", noTabs), "a\U0010FEFF\U0010FE09b");
    EXPECT_EQ(PrivateBytes::written("\xe2\x82", everything), "\U0010FEE2\U0010FE82"); // cut off
}

TEST(PrivateBytes, AnyBytesComeBackAsTheyWere) {
    std::string bytes;
    for (int first = 0; first < 256; ++first) {
        bytes += static_cast<char>(first);
        for (int second = 0; second < 256; ++second) {
            bytes += {static_cast<char>(first), static_cast<char>(second)};
        }
    }
    bytes += "\U0010FE41\U0010FEFF\xff\U0010FE00";
    for (const auto holds : {everything, noTabs}) {
        EXPECT_EQ(PrivateBytes::restored(PrivateBytes::written(bytes, holds), holds), bytes);
    }
}

TEST(PrivateBytes, APrivateCharacterThatNobodyWroteHereStandsForItself) {
    EXPECT_EQ(PrivateBytes::restored("\U0010FE41", everything), "\U0010FE41"); // of a byte that is text
    EXPECT_EQ(PrivateBytes::restored("\U0010FE09", everything), "\U0010FE09");
    EXPECT_EQ(PrivateBytes::restored("\U0010FE09", noTabs), "\t");
}

} // namespace
} // namespace quillane
