#include "AbsentCommandRunner.h"
#include "FakeMetadata.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "SearchingCommandRunner.h"
#include "TemporaryFolder.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

class SearchingCommandRunnerTest : public testing::Test {
  protected:
    const std::string m_mdfind = "/usr/bin/mdfind";
    const std::vector<std::string> m_arguments = {"-onlyin", "/a", "kMDItemFSName == 'b.txt'"};
    TemporaryFolder m_volume;
    PosixFileSystem m_files{m_volume.path(), FileURL("/Users/alex")};
    FakeMetadata m_metadata;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    MetadataSearch m_search{m_files, m_metadata, m_clock, {FileURL("/")}};
    ScriptedCommandRunner m_others;
    SearchingCommandRunner m_runner{m_files, m_search, m_others};

    void SetUp() override { m_volume.file("a/b.txt"); }
};

TEST_F(SearchingCommandRunnerTest, TheSearchAnswersWhereThereIsNoSuchProgram) {
    EXPECT_EQ(m_runner.run(m_mdfind, m_arguments).valueOr("failed"), "/a/b.txt\n");
    EXPECT_TRUE(m_others.calls().empty());
}

TEST_F(SearchingCommandRunnerTest, TheProgramIsRunWhereThereIsOne) {
    m_volume.file("usr/bin/mdfind");
    m_others.answer(m_mdfind, m_arguments, "from the system\n");
    EXPECT_EQ(m_runner.run(m_mdfind, m_arguments).valueOr("failed"), "from the system\n");
}

TEST_F(SearchingCommandRunnerTest, EveryOtherProgramIsTheWrappedRunners) {
    m_others.answer("/bin/launchctl", {"list"}, "PID\tStatus\tLabel\n");
    EXPECT_EQ(m_runner.run("/bin/launchctl", {"list"}).valueOr("failed"), "PID\tStatus\tLabel\n");
    EXPECT_FALSE(m_runner.run("/usr/local/bin/mdfind", m_arguments).ok());
    EXPECT_EQ(m_others.calls().size(), 2U);
}

TEST_F(SearchingCommandRunnerTest, WhatAnotherProgramComplainsOfAndItsUserAreTheWrappedRunners) {
    m_others.answer("/bin/launchctl", {"bootout"}, "", "usage\n");
    EXPECT_EQ(m_runner
                  .run("/bin/launchctl", {"bootout"}, {}, CommandRunner::kUnbounded,
                       CommandRunner::ErrorOutput::joined)
                  .valueOr("failed"),
              "usage\n");
    EXPECT_EQ(m_runner.userID(), ScriptedCommandRunner::kUserID);
}

TEST_F(SearchingCommandRunnerTest, OnASampleVolumeNothingElseStarts) {
    AbsentCommandRunner none;
    SearchingCommandRunner runner(m_files, m_search, none);
    EXPECT_EQ(runner.run(m_mdfind, m_arguments).valueOr("failed"), "/a/b.txt\n");
    const auto output = runner.run("/bin/echo", {"x"});
    ASSERT_FALSE(output.ok());
    EXPECT_EQ(output.error().code, ErrorCode::kReadNoSuchFile);
}

} // namespace
} // namespace quillane
