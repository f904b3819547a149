#include "NotificationWords.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

std::string repeated(const std::string& character, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += character;
    }
    return text;
}

TEST(NotificationWords, OrdinaryWordsStandAsTheyAre) {
    EXPECT_EQ(NotificationWords::shown("R&D <b>1</b> é 🙂"), "R&D <b>1</b> é 🙂");
    EXPECT_EQ(NotificationWords::shown(""), "");
}

TEST(NotificationWords, WhatWouldDeceiveTheEyeIsMadeVisible) {
    EXPECT_EQ(NotificationWords::shown("a\u202Eb"), "a‹U+202E›b");
    EXPECT_EQ(NotificationWords::shown("a\xFF"), "a\uFFFD");
}

TEST(NotificationWords, TwoThousandCharactersStandWhole) {
    for (const char* character : {"a", "é", "🙂"}) {
        const auto whole = repeated(character, NotificationWords::kMost);
        EXPECT_EQ(NotificationWords::shown(whole), whole);
    }
}

TEST(NotificationWords, WhatIsLongerEndsInAnEllipsisAndHasAsMany) {
    for (const char* character : {"a", "é", "🙂"}) {
        const auto shortened = repeated(character, NotificationWords::kMost - 1) + "…";
        EXPECT_EQ(NotificationWords::shown(repeated(character, NotificationWords::kMost + 1)), shortened);
        EXPECT_EQ(NotificationWords::shown(repeated(character, 10 * NotificationWords::kMost)), shortened);
    }
}

} // namespace
} // namespace quillane
