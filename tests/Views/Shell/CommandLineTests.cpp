#include "CommandLine.h"
#include "Workspace.h"
#include <gtest/gtest.h>
#include <regex>
#include <string>

using namespace quillane;
using CommandLine::reply;

TEST(CommandLine, NoWordsOpenTheWindow) {
    EXPECT_EQ(reply({}), std::nullopt);
}

TEST(CommandLine, TheVersionIsToldAsOneLine) {
    const auto version = reply({"--version"});
    ASSERT_TRUE(version.has_value());
    EXPECT_FALSE(version->isRefusal);
    EXPECT_TRUE(std::regex_match(version->text, std::regex("Quillane [0-9]+(\\.[0-9]+)+\n")))
        << version->text;
    EXPECT_EQ(reply({"-v"}), version);
}

TEST(CommandLine, HelpNamesEachOptionInLinesThatFitATerminal) {
    const auto help = reply({"--help"});
    ASSERT_TRUE(help.has_value());
    EXPECT_EQ(reply({"-h"}), help);
    EXPECT_FALSE(help->isRefusal);
    for (const char* option : {"-h, --help", "-v, --version", "-platform"}) {
        EXPECT_NE(help->text.find(option), std::string::npos) << option;
    }
    EXPECT_FALSE(std::regex_search(help->text, std::regex("[^\\n]{80}")))
        << "80 columns are what a terminal has";
}

TEST(CommandLine, AWordThatIsNotKnownIsRefusedAndNamed) {
    for (const char* word :
         {"--clean", "-x", "/home/alex", "", "-", "--", "--versions", "-help", "platform", "xplatform"}) {
        const auto refused = reply({word});
        ASSERT_TRUE(refused.has_value()) << word;
        EXPECT_TRUE(refused->isRefusal) << word;
        EXPECT_NE(refused->text.find("\"" + std::string(word) + "\""), std::string::npos) << word;
    }
}

TEST(CommandLine, TheOptionsOfQtGoOnToIt) {
    EXPECT_EQ(reply({"-platform", "offscreen"}), std::nullopt);
    EXPECT_EQ(reply({"--platform=offscreen", "-reverse"}), std::nullopt);
    EXPECT_EQ(reply({"-session", "10_20"}), std::nullopt);
}

TEST(CommandLine, AStartThatFollowsUponAnEndGoesOn) {
    EXPECT_EQ(reply({Workspace::kRelaunched}), std::nullopt);
    EXPECT_EQ(reply({Workspace::kRelaunched, "-platform", "offscreen"}), std::nullopt);
}

TEST(CommandLine, AValueOfQtsIsNoWordOfOurs) {
    EXPECT_EQ(reply({"-title", "--version"}), std::nullopt);
    EXPECT_TRUE(reply({"-reverse", "10_20"}).value().isRefusal) << "which has no value";
    EXPECT_TRUE(reply({"-title=One", "Two"}).value().isRefusal) << "which has its value";
    EXPECT_EQ(reply({"-title"}), std::nullopt) << "Qt tells what is missing";
}

TEST(CommandLine, TheFirstWordThatEndsTheProgramIsAnswered) {
    EXPECT_EQ(reply({"--version", "--clean"}), reply({"--version"}));
    EXPECT_TRUE(reply({"--clean", "--version"}).value().isRefusal);
    EXPECT_EQ(reply({"-platform", "xcb", "--help"}), reply({"--help"}));
}
