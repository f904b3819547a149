// The program is killed at any moment of a sweep and of the put back that follows. Whatever the moment, a new
// start over the same home folder finds everything: at home or in the Trash, once and whole.
#include "ContinuousClock.h"
#include "DefaultsKeys.h"
#include "MainQueue.h"
#include "RealHome.h"
#include "SystemCalls.h"
#include "ThreadTaskRunner.h"
#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <sys/wait.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr int kRandomRounds = 60;
constexpr const char* kEarlier = "Library/Caches/earlier"; // of the cleanup before the one that is killed
constexpr const char* kByHand = "Downloads/by hand";       // trashed by somebody else

// A call that changed something, as the work that was not killed makes it.
struct Change {
    std::string name;
    bool isWrite = false;
};

template <class Adapters>
struct LibraryKill : testing::Test {
    // A home with an earlier cleanup that can be put back, a stranger in the Trash, and a protected path.
    struct Ground : RealHome {
        Ground() {
            Launch<Adapters> launch(*this);
            launch.library.setProtected(Adapters::url(*this, kProtected), true);
            launch.sweep(entriesFor<Adapters>(*this, {kEarlier}), "Earlier");
            (void)launch.ports.adapters.trash.moveToTrash(Adapters::url(*this, kByHand));
        }
        // Everything that the review had ticked, among it a path that was protected meanwhile.
        std::vector<SweepEntry> entries() const {
            auto items = rows();
            items.insert(items.begin() + 2, kProtected);
            return entriesFor<Adapters>(*this, items);
        }
        // In the middle of things: a folder that held a removed item goes too.
        void removeEmptiedFolder() const {
            std::error_code notEmpty;
            fs::remove(path(kDeep).parent_path(), notEmpty);
        }
    };

    static void work(const Ground& ground) {
        Launch<Adapters> launch(ground);
        launch.sweep(ground.entries(), "Sweep");
        ground.removeEmptiedFolder();
        launch.undo();
    }
    static std::vector<Change> changesOfWork() {
        std::vector<Change> changes;
        const Ground ground;
        const SystemCallWatch watch([](const SystemCall&) { return 0; },
                                    [&](const SystemCall& call, bool succeeded) {
                                        if (call.mayChange && succeeded) {
                                            changes.push_back(
                                                {std::string(call.name), call.length != nullptr});
                                        }
                                    });
        work(ground);
        return changes;
    }
    // Dies right after so many changes; with `torn` when the last of them, a write, has written a half.
    [[noreturn]] static void workUntilKilled(const Ground& ground, std::size_t changes, bool torn) {
        std::size_t done = 0;
        const SystemCallWatch watch(
            [&](const SystemCall& call) {
                if (torn && call.length != nullptr && done + 1 == changes) {
                    *call.length /= 2;
                }
                return 0;
            },
            [&](const SystemCall& call, bool succeeded) {
                if (call.mayChange && succeeded && ++done == changes) {
                    (void)::raise(SIGKILL);
                }
            });
        if (changes == 0) {
            (void)::raise(SIGKILL);
        }
        work(ground);
        std::_Exit(0);
    }
    // Sweeps and puts back without end on real threads, and tells each call through the pipe.
    [[noreturn]] static void workForEver(const Ground& ground, int pipe) {
        MainQueue queue;
        ContinuousClock clock(queue);
        ThreadTaskRunner tasks(queue);
        RealPorts<Adapters> ports(ground, clock, tasks);
        AppLibrary library(ports.platform);
        const SystemCallWatch watch([](const SystemCall&) { return 0; },
                                    [pipe](const SystemCall&, bool) { (void)!::write(pipe, "", 1); });
        for (;;) {
            bool ended = false;
            library.tasks().start([&](StopToken) -> Task<> {
                co_await library.runSweep(ground.entries(), "Sweep");
                ground.removeEmptiedFolder();
                co_await library.undoLastOperation();
                ended = true;
            });
            if (!queue.runUntil([&] { return ended; }, 60s)) {
                std::_Exit(1);
            }
        }
    }

    static void expectKilled(pid_t child) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself: " << status;
    }

    void expectNothingLost(const Ground& ground) {
        for (const auto& [item, content] : ground.items()) {
            EXPECT_EQ(placesOf<Adapters>(ground, item).size(), 1U) << item;
        }
        EXPECT_TRUE(ground.isHome(RealHome::kProtected));
        EXPECT_TRUE(ground.isHome(RealHome::kBystander));
        EXPECT_FALSE(ground.isHome(kByHand));
        for (const auto& [item, place] : ground.itemsIn(Adapters::trashFolder(ground))) {
            ASSERT_TRUE(ground.items().contains(item)) << item;
            if (Adapters::kHasRecords) { // any desktop can restore it
                EXPECT_EQ(recordedOrigin(place), ground.path(item).string());
            }
        }
    }
    // What a new start finds stored is one of the states that were stored, and leads back what it names.
    void expectPutBackWorks(const Ground& ground) {
        Launch<Adapters> next(ground);
        EXPECT_EQ(*next.library.protectedPaths,
                  std::set<std::string>{Adapters::url(ground, RealHome::kProtected).path()});
        const auto operation = *next.library.lastOperation;
        const auto atHomeBefore = atHome(ground);
        const std::string label = operation ? operation->label : "none";
        const bool movedUnrecorded = label == "Earlier" && atHomeBefore != rowsAndOthers(ground);
        ++seen[movedUnrecorded ? "Earlier, with rows in the Trash" : label];
        std::set<std::string> named;
        std::vector<FileURL> inTrash;
        for (const auto& move : operation ? operation->moves : std::vector<TrashMove>()) {
            const auto item = itemOf(ground, move.from);
            named.insert(item);
            const auto place = placesOf<Adapters>(ground, item).at(0);
            EXPECT_TRUE(place == ground.path(item) || place == Adapters::onDisk(ground, move.to)) << item;
            if (place != ground.path(item)) {
                inTrash.push_back(move.from);
            }
        }
        if (label == "Earlier") {
            EXPECT_EQ(named, std::set<std::string>{kEarlier});
        } else if (label == "Sweep") {
            EXPECT_EQ(named, std::set<std::string>(RealHome::rows().begin(), RealHome::rows().end()));
        }
        const auto report = next.undo();
        EXPECT_EQ(report.trashed, inTrash);
        for (const auto& failure : report.failures) {
            EXPECT_EQ(failure.reason, "No longer in the Trash.");
        }
        auto expected = atHomeBefore;
        expected.insert(named.begin(), named.end());
        EXPECT_EQ(atHome(ground), expected);
        EXPECT_FALSE(Launch<Adapters>(ground).library.lastOperation->has_value());
    }
    void expectAllIsWell(const Ground& ground) {
        expectNothingLost(ground);
        expectPutBackWorks(ground);
        expectNothingLost(ground);
    }

    static std::string itemOf(const Ground& ground, const FileURL& url) {
        for (const auto& [item, content] : ground.items()) {
            if (Adapters::url(ground, item) == url) {
                return item;
            }
        }
        return "unknown: " + url.path();
    }
    static std::set<std::string> atHome(const Ground& ground) {
        std::set<std::string> items;
        for (const auto& [item, content] : ground.items()) {
            if (ground.isHome(item)) {
                items.insert(item);
            }
        }
        return items;
    }
    // What is at home when nothing of the sweep has moved.
    static std::set<std::string> rowsAndOthers(const Ground& ground) {
        std::set<std::string> items;
        for (const auto& [item, content] : ground.items()) {
            if (item != kEarlier && item != kByHand) {
                items.insert(item);
            }
        }
        return items;
    }

    std::map<std::string, int> seen; // how often each stored state was found
};

using Kinds = testing::Types<PlainAdapters, DesktopAdapters>;
TYPED_TEST_SUITE(LibraryKill, Kinds);

// Nothing lies on the disk differently but after a call that changes it, so these are all moments there are.
// A sweep that is killed before its end has moved rows that no operation names: the one before it stands, and
// the rows are in the Trash like anything that was trashed by hand.
TYPED_TEST(LibraryKill, AfterEachChangeAndInTheMiddleOfEachWriteNothingIsLost) {
    const auto changes = TestFixture::changesOfWork();
    ASSERT_GT(changes.size(), 20U);
    for (std::size_t count = 0; count <= changes.size(); ++count) {
        for (const bool torn : {false, true}) {
            if (torn && (count == 0 || !changes[count - 1].isWrite)) {
                continue;
            }
            SCOPED_TRACE("after " + std::to_string(count) + " changes, the last by " +
                         (count == 0 ? "nobody" : changes[count - 1].name) + (torn ? ", torn" : ""));
            const typename TestFixture::Ground ground;
            const pid_t child = ::fork();
            if (child == 0) {
                TestFixture::workUntilKilled(ground, count, torn);
            }
            this->expectKilled(child);
            if (!Launch<TypeParam>(ground).library.lastOperation->has_value()) {
                EXPECT_EQ(this->atHome(ground), this->rowsAndOthers(ground)); // forgotten when all is back
            }
            this->expectAllIsWell(ground);
            if (this->HasFailure()) {
                return;
            }
        }
    }
    for (const char* state : {"Earlier", "Earlier, with rows in the Trash", "Sweep", "none"}) {
        EXPECT_GT(this->seen[state], 0) << state;
    }
}

// The moment is not at a call of ours here: another process kills, while threads work.
TYPED_TEST(LibraryKill, AKillFromOutsideAtAnyMomentOnRealThreadsLosesNothing) {
    std::mt19937 random(20251121); // NOLINT(bugprone-random-generator-seed): the same rounds each time
    std::uniform_int_distribution<int> callsBefore(0, 600);
    for (int round = 0; round < kRandomRounds; ++round) {
        const int calls = callsBefore(random);
        SCOPED_TRACE("round " + std::to_string(round) + ", after about " + std::to_string(calls) + " calls");
        const typename TestFixture::Ground ground;
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            TestFixture::workForEver(ground, pipe[1]);
        }
        ::close(pipe[1]);
        char told = 0;
        for (int i = 0; i < calls; ++i) {
            ASSERT_EQ(::read(pipe[0], &told, 1), 1);
        }
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        this->expectKilled(child);
        ::close(pipe[0]);
        this->expectAllIsWell(ground);
        if (this->HasFailure()) {
            return;
        }
    }
}

} // namespace
} // namespace quillane
