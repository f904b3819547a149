#include "AbsentCommandRunner.h"
#include "FakeMetadata.h"
#include "ManualClock.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "SearchingCommandRunner.h"
#include "TemporaryFolder.h"
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace quillane {
namespace {

// The programs of the contract, and what they write. They are the same on every system.
struct Program {
    std::string path;
    std::vector<std::string> arguments;
    std::string output;
    std::string errors = {};
};

const Program kEcho{"/bin/echo", {"one line"}, "one line\n"};
const Program kNoNewline{"/usr/bin/printf", {"no newline"}, "no newline"};
const Program kNothing{"/usr/bin/true", {}, ""};
const Program kFailing{"/usr/bin/false", {}, ""};
const Program kErrorOutput{"/bin/cat", {"/no such folder/no such file"}, ""};
const Program kOddBytes{"/usr/bin/printf", {R"(a\000b\377\n\n)"}, std::string("a\0b\xFF\n\n", 6)};
const Program kUnexpanded{
    "/bin/echo", {"two  blanks", "$HOME", "*", "; echo x", "`id`"}, "two  blanks $HOME * ; echo x `id`\n"};
const Program kEmptyArgument{"/usr/bin/printf", {"[%s]", "", "b"}, "[][b]"};
const Program kInput{"/bin/cat", {}, ""};
const Program kBothOutputs{"/bin/sh", {"-c", "echo said; echo complaint >&2"}, "said\n", "complaint\n"};
const Program kOnlyComplaint{"/bin/sh", {"-c", "printf complaint >&2; exit 3"}, "", "complaint"};

const std::vector<Program>& programs() {
    static const std::vector<Program> all = {kEcho,        kNoNewline,   kNothing,      kFailing,
                                             kErrorOutput, kOddBytes,    kUnexpanded,   kEmptyArgument,
                                             kInput,       kBothOutputs, kOnlyComplaint};
    return all;
}

std::unique_ptr<CommandRunner> makePosix() {
    return std::make_unique<PosixCommandRunner>();
}

std::unique_ptr<CommandRunner> makeScripted() {
    auto runner = std::make_unique<ScriptedCommandRunner>();
    for (const auto& program : programs()) {
        runner->answer(program.path, program.arguments, program.output, program.errors);
    }
    return runner;
}

// Over a volume that holds one file, and before programs that exist only as a table.
class SearchingRunnerOfItsOwn final : public CommandRunner {
  public:
    SearchingRunnerOfItsOwn() { m_volume.file("a.txt"); }
    std::uint32_t userID() const override { return m_runner.userID(); }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        return m_runner.run(run.path, run.arguments, run.stop, run.mostBytes, run.errors);
    }

  private:
    TemporaryFolder m_volume;
    PosixFileSystem m_files{m_volume.path(), FileURL("/Users/alex")};
    FakeMetadata m_metadata;
    StepTaskRunner m_tasks;
    ManualClock m_clock{m_tasks};
    MetadataSearch m_search{m_files, m_metadata, m_clock, {FileURL("/")}};
    std::unique_ptr<CommandRunner> m_others = makeScripted();
    SearchingCommandRunner m_runner{m_files, m_search, *m_others};
};

std::unique_ptr<CommandRunner> makeSearching() {
    return std::make_unique<SearchingRunnerOfItsOwn>();
}

std::unique_ptr<CommandRunner> makeAbsent() {
    return std::make_unique<AbsentCommandRunner>();
}

int failureOf(const Result<std::string>& output) {
    return output ? 0 : output.error().code;
}

struct Adapter {
    const char* name;
    std::unique_ptr<CommandRunner> (*make)();
};

class CommandRunnerContract : public testing::TestWithParam<Adapter> {
  protected:
    std::unique_ptr<CommandRunner> m_runner = GetParam().make();

    void expectOutput(const Program& program) {
        const auto output = m_runner->run(program.path, program.arguments);
        ASSERT_TRUE(output.ok());
        EXPECT_EQ(*output, program.output);
    }
    void expectJoined(const Program& program, const std::string& written) {
        const auto output = m_runner->run(program.path, program.arguments, {}, CommandRunner::kUnbounded,
                                          CommandRunner::ErrorOutput::joined);
        EXPECT_EQ(output.ok() ? *output : "failed", written);
    }
};

TEST_P(CommandRunnerContract, TheStandardOutputIsTheAnswer) {
    expectOutput(kEcho);
}

TEST_P(CommandRunnerContract, AMissingNewlineAtTheEndIsNotAdded) {
    expectOutput(kNoNewline);
}

TEST_P(CommandRunnerContract, AProgramThatWritesNothingGivesTheEmptyText) {
    expectOutput(kNothing);
}

TEST_P(CommandRunnerContract, TheExitStatusIsNotLookedAt) {
    expectOutput(kFailing);
}

TEST_P(CommandRunnerContract, StandardErrorIsDropped) {
    expectOutput(kErrorOutput);
}

TEST_P(CommandRunnerContract, StandardErrorIsDroppedFromWhatIsWrittenBesides) {
    expectOutput(kBothOutputs);
    expectOutput(kOnlyComplaint);
}

TEST_P(CommandRunnerContract, StandardErrorThatIsAskedForJoinsTheOutputInItsPlace) {
    expectJoined(kBothOutputs, "said\ncomplaint\n");
    expectJoined(kOnlyComplaint, "complaint");
    expectJoined(kEcho, kEcho.output);
}

TEST_P(CommandRunnerContract, ABoundHoldsForBothOutputsTogether) {
    const auto failure = [&](std::size_t mostBytes, CommandRunner::ErrorOutput errors) {
        return failureOf(m_runner->run(kBothOutputs.path, kBothOutputs.arguments, {}, mostBytes, errors));
    };
    const auto both = kBothOutputs.output.size() + kBothOutputs.errors.size();
    EXPECT_EQ(failure(both, CommandRunner::ErrorOutput::joined), 0);
    EXPECT_EQ(failure(both - 1, CommandRunner::ErrorOutput::joined), ErrorCode::kReadTooLarge);
    EXPECT_EQ(failure(both - 1, CommandRunner::ErrorOutput::dropped), 0);
}

TEST_P(CommandRunnerContract, BytesComeAsTheyAreWithNulsAndInvalidText) {
    expectOutput(kOddBytes);
}

TEST_P(CommandRunnerContract, ArgumentsAreNeitherSplitNorExpanded) {
    expectOutput(kUnexpanded);
}

TEST_P(CommandRunnerContract, AnEmptyArgumentIsAnArgument) {
    expectOutput(kEmptyArgument);
}

TEST_P(CommandRunnerContract, StandardInputIsEmpty) {
    expectOutput(kInput);
}

TEST_P(CommandRunnerContract, AMissingProgramIsAFailure) {
    const auto output = m_runner->run("/no such folder/no such program", {"x"});
    ASSERT_FALSE(output.ok());
    EXPECT_EQ(output.error().code, ErrorCode::kReadNoSuchFile);
}

TEST_P(CommandRunnerContract, AProgramRunsAgain) {
    expectOutput(kEcho);
    expectOutput(kEcho);
}

TEST_P(CommandRunnerContract, AnOutputOfAllTheBytesThatItMayHaveIsTheAnswer) {
    const auto output = m_runner->run(kEcho.path, kEcho.arguments, {}, kEcho.output.size());
    EXPECT_EQ(failureOf(output), 0);
    EXPECT_EQ(output.ok() ? *output : "", kEcho.output);
}

TEST_P(CommandRunnerContract, AnOutputOfOneByteMoreIsDroppedAndAFailure) {
    EXPECT_EQ(failureOf(m_runner->run(kEcho.path, kEcho.arguments, {}, kEcho.output.size() - 1)),
              ErrorCode::kReadTooLarge);
}

TEST_P(CommandRunnerContract, ATokenThatIsNeverUsedChangesNothing) {
    const StopSource source;
    for (const auto& program : programs()) {
        const auto output = m_runner->run(program.path, program.arguments, source.token());
        EXPECT_EQ(output.ok() ? *output : "failed", program.output) << program.path;
    }
}

TEST_P(CommandRunnerContract, ManyThreadsRunProgramsAtOnce) {
    constexpr int kThreads = 8;
    constexpr int kRuns = 10;
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int run = 0; run < kRuns; ++run) {
                const auto& program = run % 2 == 0 ? kEcho : kOddBytes;
                const auto output = m_runner->run(program.path, program.arguments);
                right += output.ok() && *output == program.output ? 1 : 0;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, kThreads * kRuns);
}

INSTANTIATE_TEST_SUITE_P(Adapters, CommandRunnerContract,
                         testing::Values(Adapter{"Posix", makePosix}, Adapter{"Scripted", makeScripted},
                                         Adapter{"Searching", makeSearching}),
                         [](const auto& adapter) { return adapter.param.name; });

// What holds of every runner, also of one that can start nothing.
class AnyCommandRunnerContract : public CommandRunnerContract {};

TEST_P(AnyCommandRunnerContract, WhatWasStoppedBeforeItBeganIsAFailureOfItsOwn) {
    const StopSource source;
    source.requestStop();
    EXPECT_EQ(failureOf(m_runner->run(kEcho.path, kEcho.arguments, source.token())),
              ErrorCode::kUserCancelled);
}

TEST_P(AnyCommandRunnerContract, AMissingProgramIsMissingUnderABoundAndWithAToken) {
    const StopSource source;
    EXPECT_EQ(failureOf(m_runner->run("/no such folder/no such program", {}, source.token(), 0)),
              ErrorCode::kReadNoSuchFile);
}

INSTANTIATE_TEST_SUITE_P(Adapters, AnyCommandRunnerContract,
                         testing::Values(Adapter{"Posix", makePosix}, Adapter{"Scripted", makeScripted},
                                         Adapter{"Searching", makeSearching}, Adapter{"Absent", makeAbsent}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace
} // namespace quillane
