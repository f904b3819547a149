// The library on the machine's own threads and clock.
#include "ContinuousClock.h"
#include "LibraryTest.h"
#include "MainQueue.h"
#include "ThreadTaskRunner.h"
#include <chrono>
#include <optional>

namespace quillane {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 60'000ms; // no test comes near it

// The ports of the fixture, with real time and real threads.
class AppLibraryThreads : public LibraryTest {
  protected:
    AppLibraryThreads() { addApps(13); }
    ~AppLibraryThreads() override { IconCache::shared().attach(nullptr); }

    bool isReady(const AppLibrary& scanned) {
        return scanned.phase->kind == Kind::ready && !AppLibraryTesting::parked(scanned);
    }

    MainQueue queue;
    ContinuousClock machineClock{queue};
    std::optional<ThreadTaskRunner> threads{std::in_place, queue};
    const Platform machine{files,     commands, metadata, machineClock, *threads,
                           workspace, trash,    running,  defaults};
};

TEST_F(AppLibraryThreads, ScansOfBothKindsOneAfterAnother) {
    AppLibrary scanned(machine);
    for (int round = 0; round < 4; ++round) {
        scanned.refresh(round % 2 == 0 ? ScanReason::user : ScanReason::automatic);
        scanned.refresh(ScanReason::user);
        ASSERT_TRUE(queue.runUntil([&] { return isReady(scanned); }, kLimit));
        EXPECT_EQ(std::ranges::count_if(*scanned.apps, &InstalledApp::isMeasured), 13);
    }
    EXPECT_EQ(AppLibraryTesting::generation(scanned), 8);
}

TEST_F(AppLibraryThreads, SeveralThreadsFindTheSameDeveloperCachesAsOne) {
    for (int project = 0; project < 12; ++project) {
        const auto folder = "Users/alex/Projects/" + std::to_string(project);
        for (int package = 0; package < project + 3; ++package) {
            disk.allocated(folder + "/node_modules/p" + std::to_string(package) + "/lib/index.js", 5'000);
        }
        disk.file(folder + "/web/.venv/bin/python", "x").file(folder + "/.git/node_modules/x", "x");
        disk.file(folder + "/too/deep/to/be/looked/at/venv/bin/python", "x");
    }
    disk.allocated("Users/alex/.npm/_cacache/index", 9'000).allocated("Users/alex/.cache/tool/file", 7'000);
    scan();
    const auto expected = *library->developerCaches;
    ASSERT_EQ(expected.size(), 26U);
    AppLibrary scanned(machine);
    for (int round = 0; round < 5; ++round) {
        scanned.developerCaches = std::vector<DevCacheItem>();
        scanned.refresh(round % 2 == 0 ? ScanReason::user : ScanReason::automatic);
        ASSERT_TRUE(queue.runUntil([&] { return isReady(scanned); }, kLimit));
        EXPECT_EQ(*scanned.developerCaches, expected);
    }
}

TEST_F(AppLibraryThreads, WhatLiesDeeperThanAPathCanTellIsMeasuredBySeveralThreadsAsByOne) {
    disk.chain("Users/alex/Projects/shop/node_modules", 3'000, std::string(9'000, 'x'));
    scan();
    const auto expected = *library->developerCaches;
    ASSERT_EQ(expected.size(), 1U);
    EXPECT_GE(expected.front().bytes, 9'000);
    AppLibrary scanned(machine);
    for (int round = 0; round < 5; ++round) {
        scanned.developerCaches = std::vector<DevCacheItem>();
        scanned.refresh(ScanReason::user);
        ASSERT_TRUE(queue.runUntil([&] { return isReady(scanned); }, kLimit));
        EXPECT_EQ(*scanned.developerCaches, expected);
    }
}

TEST_F(AppLibraryThreads, IconsArriveDuringAScan) {
    auto& icons = IconCache::shared();
    icons.attach(&machine);
    AppLibrary scanned(machine);
    scanned.refresh(ScanReason::user);
    for (int i = 1; i <= 13; ++i) {
        (void)icons.icon(urlOfApp(i));
    }
    const auto allArrived = [&] {
        for (int i = 1; i <= 13; ++i) {
            if (icons.icon(urlOfApp(i)) == nullptr) {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(queue.runUntil([&] { return isReady(scanned) && allArrived(); }, kLimit));
}

TEST_F(AppLibraryThreads, TheLibraryMayGoWhileItsJobsRun) {
    for (int round = 0; round < 20; ++round) {
        AppLibrary scanned(machine);
        scanned.refresh(ScanReason::user);
        ASSERT_TRUE(queue.runUntil(
            [&] { return scanned.phase->kind == Kind::measuring && scanned.phase->done >= round % 13; },
            kLimit));
    }
    threads.reset();
    queue.drain();
}

TEST_F(AppLibraryThreads, TheCacheMayBeDetachedWhileIconsAreDecoded) {
    auto& icons = IconCache::shared();
    for (int round = 0; round < 20; ++round) {
        icons.attach(&machine);
        for (int i = 0; i < 20; ++i) {
            (void)icons.icon(FileURL("/Applications/" + std::to_string(i) + ".app"));
        }
        ASSERT_TRUE(
            queue.runUntil([&] { return icons.icon(FileURL("/Applications/0.app")) != nullptr; }, kLimit));
        icons.attach(nullptr);
    }
    threads.reset();
    queue.drain();
}

} // namespace
} // namespace quillane
