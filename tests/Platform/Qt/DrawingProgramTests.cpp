#include "DrawingProgram.h"
#include "ScriptedCommandRunner.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

std::vector<std::string> argumentsFor(const std::string& fit) {
    return {"-k", "1",  "2", "/usr/bin/prlimit", "--cpu=2", "--core=0", "--fsize=0", "/program", "--draw",
            "30", "20", fit, "/a b.svg"};
}

TEST(DrawingProgram, IsRunWithinLimitsOnThePathAndTheSize) {
    ScriptedCommandRunner programs;
    programs.answer("/usr/bin/timeout", argumentsFor("within"), "1 1\nabcd");
    programs.answer("/usr/bin/timeout", argumentsFor("around"), "1 1\nefgh");
    const auto within = DrawingProgram::picture(programs, "/program", "/a b.svg", {30, 20}, Fit::within, {});
    ASSERT_TRUE(within);
    EXPECT_EQ(within->rgba, (std::vector<std::uint8_t>{'a', 'b', 'c', 'd'}));
    const auto around = DrawingProgram::picture(programs, "/program", "/a b.svg", {30, 20}, Fit::around, {});
    ASSERT_TRUE(around);
    EXPECT_EQ(around->rgba.front(), 'e');
}

TEST(DrawingProgram, OfWhatIsNoPictureOfItsIsNothing) {
    for (const char* printed : {"", "1", "1 1", "1 1\n", "1 1\nabc", "1 1\nabcde", "0 1\n", "-1 -1\nabcd",
                                "1 x\nabcd", "4097 1\n", "99999999999 1\nabcd", "1073741824 1073741824\n"}) {
        EXPECT_FALSE(DrawingProgram::pictureIn(printed)) << printed;
    }
    EXPECT_TRUE(DrawingProgram::pictureIn("2 1\nabcdefgh"));
}

TEST(DrawingProgram, LeavesOtherArgumentsToTheProgram) {
    char name[] = "program";
    char other[] = "--sample";
    char* arguments[] = {name, other, nullptr};
    EXPECT_EQ(DrawingProgram::answer(2, arguments), std::nullopt);
    EXPECT_EQ(DrawingProgram::answer(1, arguments), std::nullopt);
}

} // namespace
} // namespace quillane
