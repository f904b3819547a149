#include "SamplePlatform.h"
#include "SupportFileLocations.h"
#include <gtest/gtest.h>
#include <random>

namespace quillane {
namespace {

using SupportFileLocations::identifierCandidates;
using SupportFileLocations::Location;
using Names = std::vector<std::string>;

TEST(SupportFileLocations, TheTableHasItsTwentyOneRowsInOrder) {
    const struct {
        const char* path;
        const char* category;
        bool allowsNameMatch;
        bool isCache;
    } rows[] = {
        {"/Users/alex/Library/Application Support", "Application Support", true, false},
        {"/Users/alex/Library/Caches", "Caches", true, true},
        {"/Users/alex/Library/Preferences", "Preferences", false, false},
        {"/Users/alex/Library/Preferences/ByHost", "Preferences (ByHost)", false, false},
        {"/Users/alex/Library/Containers", "Container", false, false},
        {"/Users/alex/Library/Group Containers", "Group Container", false, false},
        {"/Users/alex/Library/Saved Application State", "Saved State", false, true},
        {"/Users/alex/Library/HTTPStorages", "HTTP Storage", false, false},
        {"/Users/alex/Library/WebKit", "WebKit Data", false, false},
        {"/Users/alex/Library/Cookies", "Cookies", false, false},
        {"/Users/alex/Library/Logs", "Logs", true, true},
        {"/Users/alex/Library/LaunchAgents", "Launch Agent", false, false},
        {"/Users/alex/Library/Application Scripts", "Application Scripts", false, false},
        {"/Users/alex/Library/Internet Plug-Ins", "Internet Plug-In", true, false},
        {"/Users/alex/Library/PreferencePanes", "Preference Pane", true, false},
        {"/Library/Application Support", "Application Support (shared)", true, false},
        {"/Library/Caches", "Caches (shared)", false, true},
        {"/Library/Preferences", "Preferences (shared)", false, false},
        {"/Library/LaunchAgents", "Launch Agent (shared)", false, false},
        {"/Library/LaunchDaemons", "Launch Daemon", false, false},
        {"/Library/PrivilegedHelperTools", "Privileged Helper", false, false},
    };
    std::vector<Location> expected;
    for (const auto& [path, category, allowsNameMatch, isCache] : rows) {
        expected.push_back({FileURL(path), category, allowsNameMatch, isCache});
    }
    const SamplePlatform sample{SampleMac()};

    EXPECT_EQ(SupportFileLocations::all(sample.platform), expected);
    EXPECT_EQ(expected.size(), 21U);
}

TEST(SupportFileLocations, TheFirstFifteenRowsFollowTheHomeFolder) {
    SamplePlatform sample{SampleMac()};
    PosixFileSystem files(sample.disk.path(), FileURL("/Users/robin"));
    const Platform platform{files,        sample.commands, sample.metadata,
                            sample.clock, sample.runner,   sample.workspace,
                            sample.trash, sample.running,  sample.defaults};
    const auto locations = SupportFileLocations::all(platform);
    ASSERT_EQ(locations.size(), 21U);
    for (std::size_t i = 0; i < 15; ++i) {
        EXPECT_TRUE(locations[i].url.path().starts_with("/Users/robin/Library/")) << i;
    }
    for (std::size_t i = 15; i < 21; ++i) {
        EXPECT_TRUE(locations[i].url.path().starts_with("/Library/")) << i;
    }
}

struct Candidates {
    std::string name;
    Names expected;
};

class IdentifierCandidates : public testing::TestWithParam<Candidates> {};

TEST_P(IdentifierCandidates, AreStrippedStepByStep) {
    EXPECT_EQ(identifierCandidates(GetParam().name), GetParam().expected) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Suffixes, IdentifierCandidates,
    testing::Values(Candidates{"Tool", {"Tool"}}, Candidates{"", {""}},
                    Candidates{"com.example.tool.plist", {"com.example.tool"}},
                    Candidates{"com.example.tool.savedState", {"com.example.tool"}},
                    Candidates{"com.example.tool.binarycookies", {"com.example.tool"}},
                    // One suffix only, and only in its own letters.
                    Candidates{"com.example.tool.plist.plist", {"com.example.tool.plist"}},
                    Candidates{"com.example.tool.savedState.plist", {"com.example.tool.savedState"}},
                    Candidates{"com.example.tool.plist.savedState", {"com.example.tool.plist"}},
                    Candidates{"com.example.tool.PLIST", {"com.example.tool.PLIST"}},
                    Candidates{"com.example.tool.savedstate", {"com.example.tool.savedstate"}},
                    Candidates{".plist", {""}}, Candidates{"plist", {"plist"}},
                    Candidates{"com.example.tool.lockfile", {"com.example.tool.lockfile"}}));

INSTANTIATE_TEST_SUITE_P(
    TeamIdentifiers, IdentifierCandidates,
    testing::Values(
        Candidates{"ABCDE12345.com.example.tool", {"ABCDE12345.com.example.tool", "com.example.tool"}},
        Candidates{"0123456789.com.example", {"0123456789.com.example", "com.example"}},
        Candidates{"ABCDEFGHIJ.com.example", {"ABCDEFGHIJ.com.example", "com.example"}},
        Candidates{"ABCDE1234.com.example.tool", {"ABCDE1234.com.example.tool"}},
        Candidates{"ABCDE123456.com.example.tool", {"ABCDE123456.com.example.tool"}},
        Candidates{"ABCDe12345.com.example.tool", {"ABCDe12345.com.example.tool"}},
        Candidates{"ABCDE-2345.com.example.tool", {"ABCDE-2345.com.example.tool"}},
        Candidates{"ABCDE12345", {"ABCDE12345"}}, Candidates{"ABCDE12345.", {"ABCDE12345."}},
        Candidates{".ABCDE12345.com.example", {".ABCDE12345.com.example"}},
        // Letters and numbers of other scripts count as the characters that a reader sees.
        Candidates{"ÄÖÜDÉ12345.com.example", {"ÄÖÜDÉ12345.com.example", "com.example"}},
        Candidates{"A\u0308BCDE12345.com.example", {"A\u0308BCDE12345.com.example", "com.example"}},
        Candidates{"ЖЗИЙК٠١٢٣٤.com.example", {"ЖЗИЙК٠١٢٣٤.com.example", "com.example"}},
        Candidates{"äBCDE12345.com.example", {"äBCDE12345.com.example"}},
        Candidates{"ÄBCDE1234.com.example", {"ÄBCDE1234.com.example"}}, // ten bytes, nine characters
        Candidates{"あBCDE12345.com.example", {"あBCDE12345.com.example"}},
        Candidates{"ABCDE1234\xff.com.example", {"ABCDE1234\xff.com.example"}}));

INSTANTIATE_TEST_SUITE_P(
    Groups, IdentifierCandidates,
    testing::Values(Candidates{"group.com.example.tool", {"group.com.example.tool", "com.example.tool"}},
                    Candidates{"groups.com.example.tool", {"groups.com.example.tool", "com.example.tool"}},
                    Candidates{"Group.com.example.tool", {"Group.com.example.tool"}},
                    Candidates{"groupcom.example", {"groupcom.example"}}, Candidates{"group", {"group"}},
                    Candidates{
                        "ABCDE12345.group.com.example.tool.plist",
                        {"ABCDE12345.group.com.example.tool", "group.com.example.tool", "com.example.tool"}},
                    Candidates{"group.ABCDE12345.com.example",
                               {"group.ABCDE12345.com.example", "ABCDE12345.com.example", "com.example"}},
                    // Three passes and no more.
                    Candidates{"group.group.group.group.tool",
                               {"group.group.group.group.tool", "group.group.group.tool", "group.group.tool",
                                "group.tool"}}));

TEST(SupportFileLocations, CandidatesOfAnyNameAreFewAndNestInOneAnother) {
    const Names pieces = {"group.", "groups.", "ABCDE12345.", "com.", "tool",
                          ".",      "Ä",       "\xff",        "\n",   ".plist"};
    std::mt19937 random(20'240'515);
    for (int round = 0; round < 2'000; ++round) {
        std::string name;
        for (auto count = random() % 8; count > 0; --count) {
            name += pieces[random() % pieces.size()];
        }
        const auto candidates = identifierCandidates(name);
        ASSERT_FALSE(candidates.empty()) << name;
        ASSERT_LE(candidates.size(), 4U) << name;
        ASSERT_TRUE(name.starts_with(candidates[0])) << name;
        for (std::size_t i = 1; i < candidates.size(); ++i) {
            ASSERT_TRUE(candidates[i - 1].ends_with("." + candidates[i])) << name;
        }
    }
}

} // namespace
} // namespace quillane
