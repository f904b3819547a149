// A sweep on the day on which the disk is full. Each test runs in a process of its own on a small volume: one in
// memory that it mounts itself, or the one that holds the temporary folders where QUILLANE_SMALL_VOLUME is set, so
// that the same can be tried on any file system.
#include "OwnVolume.h"
#include "RealHome.h"
#include "SystemCalls.h"
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using Start = Launch<DesktopAdapters>;

// Takes every block that is left; "filler" below the folder gives them back when it is removed.
void fillUp(const fs::path& folder) {
    for (const std::size_t size : {std::size_t{1} << 20U, std::size_t{4096}, std::size_t{1}}) {
        for (int round = 0; round < 3; ++round) { // some file systems find a little more once all is synced
            const Descriptor file(::open((folder / "filler").c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600));
            const std::string block(size, 'x');
            while (::write(file.get(), block.data(), block.size()) > 0) {
            }
            ::syncfs(file.get());
        }
    }
    const Descriptor more(::open((folder / "more").c_str(), O_WRONLY | O_CREAT, 0600));
    const bool isFull = !more || ::write(more.get(), "x", 1) != 1 || ::fsync(more.get()) != 0;
    fs::remove(folder / "more");
    ASSERT_TRUE(isFull);
}

struct FullDisk : testing::Test {
    FullDisk() { testing::FLAGS_gtest_death_test_style = "fast"; }

    // Leaves with 0 when the body found nothing wrong.
    void onSmallVolume(const std::function<void(const RealHome&)>& body) const {
        if (std::getenv("QUILLANE_SMALL_VOLUME") == nullptr) { // NOLINT(concurrency-mt-unsafe): one thread
            mountOwnVolume(m_place.path());
            ::setenv("TMPDIR", m_place.path().c_str(), 1); // NOLINT(concurrency-mt-unsafe): one thread
        }
        {
            const RealHome home;
            body(home);
        }
        tellFailures();
        std::_Exit(HasFailure() ? 1 : 0);
    }
    // The process of the test says nothing by itself.
    static void tellFailures() {
        const auto& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
        for (int i = 0; i < result.total_part_count(); ++i) {
            const auto& part = result.GetTestPartResult(i);
            std::fprintf(stderr, "%d: %s\n", part.line_number(), part.message());
        }
    }
    static void layReserve(const RealHome& home) { ASSERT_TRUE(Start(home).ports.adapters.reserve.lay()); }
    // As many moves would: the rest is for what can't wait.
    static void giveAwayTheShareOfMoves(Start& start, const RealHome& home) {
        struct stat status = {};
        ASSERT_EQ(::stat(DesktopAdapters::reservePath(home).c_str(), &status), 0);
        EXPECT_TRUE(start.ports.adapters.reserve.release(
            {.device = status.st_dev, .bytes = DesktopAdapters::kReserve.whole}));
    }
    static std::int64_t reserved(const RealHome& home) {
        struct stat status = {};
        return ::stat(DesktopAdapters::reservePath(home).c_str(), &status) == 0
                   ? static_cast<std::int64_t>(status.st_blocks) * 512
                   : 0;
    }
    static void expectHome(const RealHome& home, const std::vector<std::string>& items) {
        for (const auto& item : items) {
            EXPECT_TRUE(home.isHome(item)) << item;
        }
    }
    // Small files below a folder; their names.
    static std::vector<std::string> layMany(const RealHome& home, int count) {
        std::vector<std::string> many;
        for (int i = 0; i < count; ++i) {
            many.push_back("Downloads/many " + std::to_string(i));
            std::ofstream(home.path(many.back())) << i;
        }
        return many;
    }

    TemporaryFolder m_place;
};

TEST_F(FullDisk, ASweepMovesAndIsPutBackAfterARestart) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    fillUp(home.path());
                    {
                        Start start(home);
                        start.library.setProtected(DesktopAdapters::url(home, RealHome::kProtected), true);
                        const auto report =
                            start.sweep(entriesFor<DesktopAdapters>(home, RealHome::rows()), "Sweep");
                        EXPECT_TRUE(report.failures.empty());
                        EXPECT_EQ(report.itemsMovedToTrash, static_cast<int>(RealHome::rows().size()));
                        EXPECT_TRUE(recordsWithoutItem(DesktopAdapters::trashFolder(home)).empty());
                    }
                    fillUp(home.path()); // what was given away and not used is gone by then
                    Start next(home);
                    EXPECT_TRUE(next.library.isProtected(DesktopAdapters::url(home, RealHome::kProtected)));
                    ASSERT_TRUE(next.library.lastOperation->has_value());
                    EXPECT_TRUE(next.undo().failures.empty());
                    expectHome(home, RealHome::rows());
                    EXPECT_FALSE(Start(home).library.lastOperation->has_value());
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, WhatLayInAFolderThatIsGoneComesBackToo) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    Start start(home);
                    start.sweep(entriesFor<DesktopAdapters>(home, {RealHome::kDeep}), "Sweep");
                    fs::remove_all(home.path("Documents/deep"));
                    giveAwayTheShareOfMoves(start, home);
                    fillUp(home.path());
                    EXPECT_TRUE(start.undo().failures.empty());
                    expectHome(home, {RealHome::kDeep});
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, TheReserveComesBackOnceTheTrashIsEmptied) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    fillUp(home.path());
                    Start start(home);
                    start.sweep(entriesFor<DesktopAdapters>(home, {"Library/Caches/com.example.a"}), "Sweep");
                    EXPECT_LT(reserved(home), DesktopAdapters::kReserve.whole);
                    fs::rename(home.path("filler"), DesktopAdapters::trashFolder(home) / "filler");
                    start.sweep(
                        {{FileURL("/.Trash"), SweepCategory::trash, "Everything in the Trash", "", 1}},
                        "Sweep");
                    EXPECT_GE(reserved(home), DesktopAdapters::kReserve.whole);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, TheReserveComesBackAtTheNextStartOnceThereIsRoom) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    fillUp(home.path());
                    Start(home).sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Sweep");
                    const auto filler = home.path("filler");
                    fs::resize_file(filler, fs::file_size(filler) - DesktopAdapters::kReserve.whole * 3 / 4);
                    EXPECT_FALSE(Start(home).ports.adapters.reserve.lay()); // the last room is for others
                    fs::remove(filler);
                    layReserve(home);
                    EXPECT_GE(reserved(home), DesktopAdapters::kReserve.whole);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, WhatAStartFindsNoRoomForIsLaidOnceTheTrashIsEmptied) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    fs::create_directories(DesktopAdapters::trashFolder(home));
                    fillUp(home.path());
                    Start start(home);
                    EXPECT_FALSE(start.ports.adapters.reserve.lay());
                    fs::rename(home.path("filler"), DesktopAdapters::trashFolder(home) / "filler");
                    start.sweep(
                        {{FileURL("/.Trash"), SweepCategory::trash, "Everything in the Trash", "", 1}},
                        "Sweep");
                    EXPECT_GE(reserved(home), DesktopAdapters::kReserve.whole);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, TheReserveComesBackAtAMoveThatFindsRoom) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    fillUp(home.path());
                    Start start(home);
                    start.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Sweep");
                    EXPECT_LT(reserved(home), DesktopAdapters::kReserve.whole);
                    fs::remove(home.path("filler"));
                    start.sweep(entriesFor<DesktopAdapters>(home, {"Library/Caches/com.example.a"}), "Next");
                    EXPECT_GE(reserved(home), DesktopAdapters::kReserve.whole);
                }),
                testing::ExitedWithCode(0), "");
}

// Without its head a file in that place counts as somebody else's, and would be so forever.
TEST_F(FullDisk, WhatTheReserveBeginsWithIsOnTheDiskBeforeTheRest) {
    const RealHome home;
    SpaceReserve reserve(DesktopAdapters::reservePath(home), DesktopAdapters::kReserve);
    std::vector<std::string> calls;
    {
        const SystemCallWatch watch([](const SystemCall&) { return 0; },
                                    [&](const SystemCall& call, bool) {
                                        if (call.name == "pwrite" || call.name == "fsync") {
                                            calls.emplace_back(call.name);
                                        }
                                    });
        ASSERT_TRUE(reserve.lay());
    }
    ASSERT_GT(calls.size(), 4U);
    calls.resize(3);
    EXPECT_EQ(calls, (std::vector<std::string>{"pwrite", "fsync", "pwrite"}));
}

// 1 MB, of which a quarter is for the settings, is room for less than 200 records.
TEST_F(FullDisk, MoreRowsThanTheReserveHasRoomForStayWhereTheyAreAndTheRestCanBePutBackAfterARestart) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    const auto many = layMany(home, 300);
                    layReserve(home);
                    fillUp(home.path());
                    int moved = 0;
                    {
                        Start start(home);
                        const auto report = start.sweep(entriesFor<DesktopAdapters>(home, many), "Sweep");
                        moved = report.itemsMovedToTrash;
                        EXPECT_GT(moved, 100);
                        EXPECT_FALSE(report.failures.empty());
                        EXPECT_EQ(report.failures.size() + static_cast<std::size_t>(moved), many.size());
                        for (const auto& failure : report.failures) {
                            EXPECT_TRUE(fs::exists(failure.url.path()));
                        }
                    }
                    Start next(home);
                    const auto report = next.undo();
                    EXPECT_EQ(report.trashed.size(), static_cast<std::size_t>(moved));
                    EXPECT_TRUE(report.failures.empty());
                    for (std::size_t i = 0; i < many.size(); ++i) {
                        EXPECT_EQ(everythingAt(home.path(many[i])), std::to_string(i));
                    }
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, WithoutAReserveEverythingStaysWhereItIsAndTheEarlierCleanupCanStillBePutBack) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    {
                        Start start(home);
                        start.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Earlier");
                        const auto many = layMany(home, 300);
                        fillUp(home.path());
                        const auto report = start.sweep(entriesFor<DesktopAdapters>(home, many), "Sweep");
                        EXPECT_EQ(report.itemsMovedToTrash, 0);
                        EXPECT_EQ(report.failures.size(), many.size());
                    }
                    Start next(home);
                    EXPECT_EQ((*next.library.lastOperation).value().label, "Earlier");
                    next.undo();
                    expectHome(home, {"Downloads/link"});
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, AValueThatMisleadsIsGoneAtTheNextStartAlsoWithoutAReserve) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    const Defaults::Value paths(std::vector<std::string>{"/protected"});
                    FileDefaults settings(home.settingsPath());
                    settings.set("paths", paths);
                    settings.set("taken", Defaults::Data(3000, 1));
                    settings.set("operation", Defaults::Data(3000, 1));
                    fillUp(home.path());
                    settings.setOrForget("operation", Defaults::Data(9000, 2));
                    settings.clear("taken");
                    const FileDefaults next(home.settingsPath());
                    EXPECT_EQ(next.value("operation"), std::nullopt);
                    EXPECT_EQ(next.value("taken"), std::nullopt);
                    EXPECT_EQ(next.value("paths"), paths);
                    EXPECT_EQ(settings.data("operation"), Defaults::Data(9000, 2));
                    fs::remove(home.path("filler"));
                    settings.set("other", true);
                    EXPECT_EQ(next.data("operation"), Defaults::Data(9000, 2));
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, AnotherVolumeThatIsFullTakesNothingFromTheReserve) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    layReserve(home);
                    fs::create_directory(home.path("Disk"));
                    mountOwnVolume(home.path("Disk"));
                    std::ofstream(home.path("Disk/a")) << "text";
                    fillUp(home.path("Disk"));
                    Start start(home);
                    const auto report = start.sweep(entriesFor<DesktopAdapters>(home, {"Disk/a"}), "Sweep");
                    EXPECT_EQ(report.failures.size(), 1U);
                    EXPECT_EQ(everythingAt(home.path("Disk/a")), "text");
                    EXPECT_EQ(reserved(home), DesktopAdapters::kReserve.whole);
                    ASSERT_EQ(::umount(home.path("Disk").c_str()), 0);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, WhereNoMoreFilesCanBeMadeTheReserveIsNotGivenAwayForNothing) {
    EXPECT_EXIT(onSmallVolume([](const RealHome& home) {
                    const std::string disk = home.path("Disk");
                    fs::create_directory(disk);
                    mountOwnVolume(disk);
                    SpaceReserve reserve(disk + "/reserve", DesktopAdapters::kReserve);
                    ASSERT_TRUE(reserve.lay());
                    struct stat status = {};
                    ASSERT_EQ(::stat((disk + "/reserve").c_str(), &status), 0);
                    ASSERT_EQ(::mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT, "nr_inodes=2"), 0);
                    EXPECT_FALSE(reserve.release({.device = status.st_dev}));
                    ASSERT_EQ(::mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT, "nr_inodes=3"), 0);
                    EXPECT_TRUE(reserve.release({.device = status.st_dev}));
                    ASSERT_EQ(::umount(disk.c_str()), 0);
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(FullDisk, AnItemComesBackAlsoWhereItsFolderHasToGrowForIt) {
    const RealHome home;
    layReserve(home);
    Start start(home);
    start.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Sweep");
    giveAwayTheShareOfMoves(start, home);
    int refused = 0;
    {
        const SystemCallWatch watch(
            [&](const SystemCall& call) { return call.name == "renameat2" && refused++ == 0 ? ENOSPC : 0; });
        EXPECT_TRUE(start.undo().failures.empty());
    }
    EXPECT_EQ(refused, 2);
    expectHome(home, {"Downloads/link"});
}

} // namespace
} // namespace quillane
