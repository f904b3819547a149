#include "Relaunch.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

const std::string kBundle = "/Applications/A folder/Quillane.app";
const ScriptedCommandRunner::Call kOpen = {"/usr/bin/open", {"-n", kBundle, "--args", "--relaunched"}};

class RelaunchTest : public testing::Test {
  protected:
    void begin() {
        Relaunch::begin(tasks, commands, kBundle, [this] { ++ends; });
    }

    StepTaskRunner tasks;
    ScriptedCommandRunner commands;
    int ends = 0;
};

TEST_F(RelaunchTest, OpensTheBundleOnceMoreAndThenEnds) {
    commands.answer(kOpen.path, kOpen.arguments, "");
    begin();
    EXPECT_TRUE(commands.calls().empty()) << "on the main thread nothing waits";
    tasks.runJob();
    EXPECT_EQ(commands.calls(), std::vector({kOpen}));
    EXPECT_EQ(ends, 0) << "on the main thread alone";
    tasks.settle();
    EXPECT_EQ(ends, 1);
}

TEST_F(RelaunchTest, EndsAlsoWhereNothingCouldBeOpened) {
    commands.fail(kOpen.path, kOpen.arguments);
    begin();
    tasks.runAll();
    EXPECT_EQ(ends, 1);
}

} // namespace
} // namespace quillane
