// Somebody moves things about in a tree while it is deleted. What was never in it stays.
#include "Descriptor.h"
#include "FileRemover.h"
#include "OwnVolume.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct RemovalFaults : testing::Test {
    enum class Moment { before, after };

    RemovalFaults() {
        testing::FLAGS_gtest_death_test_style = "fast";
        disk.file("precious/kept", "kept");
    }

    // Deletes "tree" and lets somebody act once, at a call with this name for this entry.
    Result<> removeTree(Moment moment, const char* call, const char* entry,
                        const std::function<void()>& act) const {
        bool acted = false;
        const auto actAt = [&](Moment now, const SystemCall& made) {
            if (now == moment && made.name == call && made.path == entry && !std::exchange(acted, true)) {
                act();
            }
        };
        const SystemCallWatch watch(
            [&](const SystemCall& made) {
                actAt(Moment::before, made);
                return 0;
            },
            [&](const SystemCall& made, bool) { actAt(Moment::after, made); });
        auto removed = removeTree();
        EXPECT_TRUE(acted);
        return removed;
    }
    Result<> removeTree() const {
        const Descriptor folder(::open(disk.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        return FileRemover::removeTree(folder.get(), "tree");
    }
    bool isThere(const std::string& below) const { return fs::exists(fs::symlink_status(disk.at(below))); }
    static std::string levels(int count) {
        std::string path;
        for (int i = 0; i < count; ++i) {
            path += "/d";
        }
        return path;
    }

    TemporaryFolder disk;
};

TEST_F(RemovalFaults, AFolderThatBecomesALinkBeforeItIsEnteredIsNotFollowed) {
    disk.file("tree/below/x");
    const auto removed = removeTree(Moment::before, "openat", "below", [&] {
        disk.rename("tree/below", "away");
        disk.link("tree/below", "../precious");
    });
    EXPECT_FALSE(removed.ok());
    EXPECT_TRUE(isThere("precious/kept"));
}

TEST_F(RemovalFaults, AnEntryThatComesIntoAFolderWhileTheWorkIsBelowItGoesToo) {
    disk.file("tree/below/x");
    EXPECT_TRUE(removeTree(Moment::after, "unlinkat", "x", [&] { disk.file("tree/late"); }).ok());
    EXPECT_FALSE(isThere("tree"));
}

// The way back leads through "..", and that is a stranger's folder then.
TEST_F(RemovalFaults, AFolderThatIsMovedOutOfADeepTreeDoesNotLeadTheWorkOutOfIt) {
    disk.chain("tree", 60);
    const auto removed = removeTree(Moment::after, "unlinkat", "leaf",
                                    [&] { disk.rename("tree" + levels(30), "precious/d"); });
    ASSERT_FALSE(removed.ok());
    EXPECT_EQ(removed.error().underlying, ESTALE);
    EXPECT_TRUE(isThere("precious/kept"));
}

TEST_F(RemovalFaults, AFolderThatSomebodyElseDeletesBeforeItIsEnteredIsNoFailure) {
    disk.file("tree/below/x");
    EXPECT_TRUE(removeTree(Moment::before, "openat", "below", [&] { disk.remove("tree/below"); }).ok());
    EXPECT_FALSE(isThere("tree"));
}

// It is read again only as long as that takes something away.
TEST_F(RemovalFaults, AFolderThatIsNeverEmptyIsAFailureAndNoEndlessWork) {
    disk.file("tree/below/x");
    int times = 0;
    const SystemCallWatch watch([&](const SystemCall& call) {
        return call.name == "unlinkat" && call.path == "below" && ++times < 10 ? ENOTEMPTY : 0;
    });
    const auto removed = removeTree();
    ASSERT_FALSE(removed.ok());
    EXPECT_EQ(removed.error().underlying, ENOTEMPTY);
    EXPECT_EQ(times, 2);
}

// ---- where the work meets a mount, in a process whose mounts nobody else sees

struct RemovalMounts : RemovalFaults {
    RemovalMounts() { disk.folder("tree/below").folder("volume"); }

    // Leaves with 0 when the removal ended at a mount and what lies beyond is there.
    void inOwnWorld(const std::function<Result<>()>& removal) const {
        mountOwnVolume(disk.at("volume"));
        const auto removed = removal();
        const bool ended = !removed.ok() && removed.error().underlying == EXDEV;
        std::_Exit(ended && isThere("precious/kept") && isThere("tree/below/kept") ? 0 : 1);
    }
    void bindPrecious() const { mount(disk.at("precious").c_str(), nullptr, MS_BIND); }
    void mountVolume() {
        mount("volume", "tmpfs", 0);
        disk.file("tree/below/kept");
    }
    void mount(const char* source, const char* kind, unsigned long flags) const {
        if (::mount(source, disk.at("tree/below").c_str(), kind, flags, nullptr) != 0) {
            std::_Exit(2);
        }
    }
    // What a system that can't tell something has: no list of mounts, no numbers of mounts.
    Result<> removeTreeWithout(bool list, bool numbers) const {
        const SystemCallWatch watch([=](const SystemCall& call) {
            if (!list && call.path.ends_with("mountinfo")) {
                return ENOENT;
            }
            return !numbers && call.name == "statx" ? ENOSYS : 0;
        });
        return removeTree();
    }
};

TEST_F(RemovalMounts, WhatIsMountedWhileTheWorkIsUnderWayIsNotEntered) {
    EXPECT_EXIT(
        inOwnWorld([&] { return removeTree(Moment::before, "openat", "below", [&] { bindPrecious(); }); }),
        testing::ExitedWithCode(0), "");
}

TEST_F(RemovalMounts, WithoutAListOfMountsTheNumberOfTheMountTells) {
    EXPECT_EXIT(inOwnWorld([&] {
                    bindPrecious();
                    return removeTreeWithout(false, true);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(RemovalMounts, WithoutNumbersOfMountsTheListTells) {
    EXPECT_EXIT(inOwnWorld([&] {
                    bindPrecious();
                    return removeTreeWithout(true, false);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(RemovalMounts, WithoutEitherAnotherVolumeIsStillToldByItsDevice) {
    EXPECT_EXIT(inOwnWorld([&] {
                    mountVolume();
                    return removeTreeWithout(false, false);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(RemovalMounts, AFolderThatCannotBeAskedWhereItLiesIsNotEntered) {
    disk.file("tree/below/x");
    const SystemCallWatch watch(
        [](const SystemCall& call) { return call.name == "statx" || call.name == "fstat" ? EIO : 0; });
    EXPECT_FALSE(removeTree().ok());
    EXPECT_TRUE(isThere("tree/below/x"));
}

} // namespace
} // namespace quillane
