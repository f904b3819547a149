#include "TrashNames.h"
#include <gtest/gtest.h>
#include <string>

namespace quillane {
namespace {

using TrashNames::candidate;

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST(TrashNames, TheFirstNameIsTheItemsOwnAndTheNextCount) {
    EXPECT_EQ(candidate("a.txt", 0, 255), "a.txt");
    EXPECT_EQ(candidate("a.txt", 1, 255), "a 2.txt");
    EXPECT_EQ(candidate("a.txt", 9, 255), "a 10.txt");
    EXPECT_EQ(candidate("a", 1, 255), "a 2");
}

TEST(TrashNames, AStemIsCutBetweenCharactersOfAnyLength) {
    for (const std::string character : {"\u00e9", "\u20ac", "\U0001F600"}) {
        const auto name = repeated(character, 100);
        for (std::size_t limit = 10; limit < 30; ++limit) {
            EXPECT_EQ(candidate(name, 0, limit), repeated(character, limit / character.size())) << limit;
            EXPECT_EQ(candidate(name + ".txt", 1, limit + 6),
                      repeated(character, limit / character.size()) + " 2.txt")
                << limit;
        }
    }
}

TEST(TrashNames, AStemOfBytesThatBeginNoCharacterIsCutAnywhere) {
    for (const char byte : {'\x80', '\xbf'}) {
        EXPECT_EQ(candidate(std::string(255, byte), 0, 245), std::string(245, byte));
        EXPECT_EQ(candidate(std::string(255, byte), 1, 245), std::string(243, byte) + " 2");
        EXPECT_EQ(candidate("ab" + std::string(253, byte), 0, 245), "ab" + std::string(243, byte));
        EXPECT_EQ(candidate(std::string(4, byte) + ".txt", 1, 8), std::string(2, byte) + " 2.txt");
    }
}

TEST(TrashNames, AStemThatHasNoRoomForItsFirstCharacterIsCutInIt) {
    EXPECT_EQ(candidate("\U0001F600.txt", 1, 9), "\xf0\x9f\x98 2.txt");
}

} // namespace
} // namespace quillane
