// Processes over one settings file, as where no lock keeps a second start away: what each stores stays.
#include "DefaultsKeys.h"
#include "RealHome.h"
#include "StoredRecords.h"
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace quillane {
namespace {

constexpr int kProcesses = 2;
constexpr int kRounds = 25;

std::string nameOf(int process, int round) {
    return std::to_string(process) + "-" + std::to_string(round);
}

FileURL protectedBy(int process, int round) {
    return FileURL("/protected/" + nameOf(process, round));
}

// Protects, lifts, and moves one item to the Trash, again and again.
void work(const RealHome& home, int process) {
    Launch<DesktopAdapters> launch(home);
    for (int round = 0; round < kRounds; ++round) {
        launch.library.setProtected(protectedBy(process, round), true);
        launch.library.setProtected(FileURL("/lifted/" + nameOf(process, round)), true);
        launch.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/" + nameOf(process, round)}),
                     nameOf(process, round));
        launch.library.setProtected(FileURL("/lifted/" + nameOf(process, round)), false);
    }
}

void workInProcesses(const RealHome& home) {
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            work(home, process);
            ::_exit(0);
        }
        ASSERT_GT(child, 0);
        children.push_back(child);
    }
    for (const auto child : children) {
        int status = 1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
}

TEST(SharedSettings, ProcessesThatProtectAndMoveAtOnceLoseNeitherProtectionNorOperation) {
    RealHome home;
    for (int process = 0; process < kProcesses; ++process) {
        for (int round = 0; round < kRounds; ++round) {
            home.disk.file("home/Downloads/" + nameOf(process, round), nameOf(process, round));
        }
    }
    workInProcesses(home);
    Launch<DesktopAdapters> next(home);
    std::set<std::string> expected;
    for (int process = 0; process < kProcesses; ++process) {
        for (int round = 0; round < kRounds; ++round) {
            expected.insert(protectedBy(process, round).path());
        }
    }
    EXPECT_EQ(*next.library.protectedPaths, expected);
    // The last one of either, and it can be put back.
    ASSERT_TRUE(next.library.lastOperation->has_value());
    const auto label = (*next.library.lastOperation)->label;
    EXPECT_TRUE(label == nameOf(0, kRounds - 1) || label == nameOf(1, kRounds - 1)) << label;
    EXPECT_EQ(next.undo().trashed.size(), 1U);
    EXPECT_TRUE(std::filesystem::exists(home.path("Downloads/" + label)));
}

} // namespace
} // namespace quillane
