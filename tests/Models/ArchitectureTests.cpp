#include "Architecture.h"
#include <algorithm>

namespace quillane {
namespace {

TEST(Architecture, TheCasesAreDeclaredFromTheMostWidelyRunning) {
    EXPECT_THAT(kAllArchitectures,
                testing::ElementsAre(Architecture::universal, Architecture::appleSilicon, Architecture::intel,
                                     Architecture::intel32, Architecture::powerPC, Architecture::unknown));
}

TEST(Architecture, EachHasItsWordsAndIsFoundByThem) {
    const std::vector<std::pair<Architecture, std::string>> rows = {
        {Architecture::universal, "Universal"}, {Architecture::appleSilicon, "Apple Silicon"},
        {Architecture::intel, "Intel"},         {Architecture::intel32, "32-bit Intel"},
        {Architecture::powerPC, "PowerPC"},     {Architecture::unknown, "Unknown"}};
    for (const auto& [architecture, words] : rows) {
        EXPECT_EQ(rawValue(architecture), words);
        EXPECT_EQ(architectureFromRawValue(words), architecture);
    }
}

TEST(Architecture, UnknownWordsAreNoArchitecture) {
    for (const char* words : {"", "intel", "Intel ", "UNKNOWN", "arm64"}) {
        EXPECT_EQ(architectureFromRawValue(words), std::nullopt) << words;
    }
}

TEST(Architecture, OnlyWhatNoMacRunsAnyMoreIsDead) {
    for (const auto architecture : kAllArchitectures) {
        const bool expected = architecture == Architecture::intel32 || architecture == Architecture::powerPC;
        EXPECT_EQ(isDead(architecture), expected) << rawValue(architecture);
    }
}

TEST(Architecture, AnUnknownOneIsNotDead) {
    EXPECT_FALSE(isDead(Architecture::unknown));
}

TEST(Architecture, TheOrderIsThatOfTheWords) {
    auto sorted = kAllArchitectures;
    std::ranges::sort(sorted, std::less<>());
    EXPECT_THAT(sorted,
                testing::ElementsAre(Architecture::intel32, Architecture::appleSilicon, Architecture::intel,
                                     Architecture::powerPC, Architecture::universal, Architecture::unknown));
}

// The language has an order of its own for enumerations, by declaration; every operator must take ours.
TEST(Architecture, EveryOperatorTakesTheOrderOfTheWords) {
    EXPECT_TRUE(Architecture::intel32 < Architecture::universal);
    EXPECT_TRUE(Architecture::intel32 <= Architecture::universal);
    EXPECT_TRUE(Architecture::universal > Architecture::appleSilicon);
    EXPECT_TRUE(Architecture::universal >= Architecture::appleSilicon);
    EXPECT_TRUE((Architecture::universal <=> Architecture::intel) > 0);
}

} // namespace
} // namespace quillane
