#include "Crew.h"
#include "MainQueue.h"
#include "StepTaskRunner.h"
#include "ThreadTaskRunner.h"
#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <latch>
#include <stdexcept>
#include <string>
#include <thread>

namespace quillane {
namespace {

using Numbers = std::vector<int>;
using Others = Crew<int>::Others;

// Helpers that come when the test lets them: never during the run itself.
class CrewAlone : public testing::Test {
  protected:
    StepTaskRunner runner;
    Numbers done;
};

TEST_F(CrewAlone, NoPiecesAskNobody) {
    Crew<int>::run(runner, Priority::utility, 3, {}, [](int, const Others&) { FAIL(); });
    EXPECT_EQ(runner.waitingJobs(), 0U);
}

TEST_F(CrewAlone, HelpersAreAskedAtThePriorityOfTheWork) {
    Crew<int>::run(runner, Priority::background, 3, {1}, [](int, const Others&) {});
    EXPECT_EQ(runner.history(), std::vector(3, Priority::background));
}

TEST_F(CrewAlone, WithoutHelpEverythingIsDoneInOrderHere) {
    Crew<int>::run(runner, Priority::utility, 3, {1, 2, 3},
                   [this](int piece, const Others&) { done.push_back(piece); });
    EXPECT_EQ(done, (Numbers{1, 2, 3}));
}

TEST_F(CrewAlone, WhatIsGivenAwayIsDoneToo) {
    Crew<int>::run(runner, Priority::utility, 0, {3}, [this](int piece, const Others& others) {
        done.push_back(piece);
        for (int i = 0; i < piece; ++i) {
            others.give(i);
        }
    });
    EXPECT_EQ(done, (Numbers{3, 0, 1, 2, 0, 0, 1, 0}));
}

TEST_F(CrewAlone, NobodyWantsAnythingWhereNobodyWaits) {
    Crew<int>::run(runner, Priority::utility, 3, {1, 2}, [](int piece, const Others& others) {
        EXPECT_FALSE(others.want());
        if (piece > 0) {
            others.give(0);
        }
    });
}

TEST_F(CrewAlone, AWorkerCanTakeWhatNobodyHasBegun) {
    Crew<int>::run(runner, Priority::utility, 0, {1, 2, 3}, [this](int piece, const Others& others) {
        done.push_back(piece);
        if (piece == 1) {
            done.push_back(10 * others.take().value());
            others.give(4);
        }
        if (piece == 4) {
            EXPECT_EQ(others.take(), std::nullopt) << "all are done";
        }
    });
    EXPECT_EQ(done, (Numbers{1, 20, 3, 4}));
}

TEST_F(CrewAlone, NobodyWantsAnythingAfterPiecesWereTaken) {
    Crew<int>::run(runner, Priority::utility, 0, {1, 2, 3}, [](int, const Others& others) {
        static_cast<void>(others.take());
        EXPECT_FALSE(others.want());
    });
}

TEST_F(CrewAlone, AHelperThatComesTooLateTouchesNothing) {
    {
        const std::string text = "gone when the helper comes";
        Crew<int>::run(runner, Priority::utility, 2, {1, 2}, [&, text](int piece, const Others&) {
            EXPECT_EQ(text.size(), 26U);
            done.push_back(piece);
        });
    }
    runner.runAll();
    EXPECT_EQ(done, (Numbers{1, 2}));
}

TEST_F(CrewAlone, WhatAPieceThrowsIsThrownAndTheRestIsDropped) {
    EXPECT_THROW(Crew<int>::run(runner, Priority::utility, 1, {1, 2, 3},
                                [this](int piece, const Others& others) {
                                    done.push_back(piece);
                                    if (piece == 2) {
                                        others.give(4);
                                        throw std::runtime_error("two");
                                    }
                                }),
                 std::runtime_error);
    EXPECT_EQ(done, (Numbers{1, 2}));
}

// Real threads.
class CrewOfThreads : public testing::Test {
  protected:
    MainQueue queue;
    ThreadTaskRunner threads{queue};
};

TEST_F(CrewOfThreads, PiecesAreDoneSideBySide) {
    std::latch both(2); // neither goes on alone
    Crew<int>::run(threads, Priority::utility, 1, {1, 2},
                   [&](int, const Others&) { both.arrive_and_wait(); });
}

TEST_F(CrewOfThreads, AWorkerThatWaitsIsGivenPartOfALargePiece) {
    std::latch taken(1);
    std::thread::id giver;
    std::thread::id taker;
    Crew<int>::run(threads, Priority::utility, 1, {1}, [&](int piece, const Others& others) {
        if (piece == 2) {
            taker = std::this_thread::get_id();
            taken.count_down();
            return;
        }
        giver = std::this_thread::get_id();
        while (!others.want()) {
            std::this_thread::yield(); // until the other one has come
        }
        others.give(2);
        taken.wait();
    });
    EXPECT_NE(taker, giver);
}

TEST_F(CrewOfThreads, WhoTakesAPieceHearsThatTheWorkerItWasForWaits) {
    Crew<int>::run(threads, Priority::utility, 1, {1, 2}, [&](int piece, const Others& others) {
        if (piece == 1) {
            static_cast<void>(others.take()); // nothing where the other one has come already
            while (!others.want()) {
                std::this_thread::yield();
            }
        }
    });
}

TEST_F(CrewOfThreads, EveryPieceOfAGrowingTreeIsDoneOnce) {
    constexpr int kDepth = 12;
    std::atomic<int> leaves = 0;
    Crew<int>::run(threads, Priority::utility, 3, {0, 0, 0}, [&](int depth, const Others& others) {
        // Depth first here, and away what others want.
        Numbers mine = {depth};
        while (!mine.empty()) {
            const int level = mine.back();
            mine.pop_back();
            if (level == kDepth) {
                ++leaves;
                continue;
            }
            mine.push_back(level + 1);
            if (others.want()) {
                others.give(level + 1);
            } else {
                mine.push_back(level + 1);
            }
        }
    });
    EXPECT_EQ(leaves, 3 << kDepth);
}

TEST_F(CrewOfThreads, ARunThatThrowsWaitsForWhoeverIsAtWork) {
    std::atomic<bool> ended = false;
    std::latch begun(2);
    EXPECT_THROW(Crew<int>::run(threads, Priority::utility, 1, {1, 2},
                                [&](int piece, const Others&) {
                                    begun.arrive_and_wait();
                                    if (piece == 1) {
                                        throw std::runtime_error("one");
                                    }
                                    std::this_thread::yield();
                                    ended = true;
                                }),
                 std::runtime_error);
    EXPECT_TRUE(ended);
}

TEST_F(CrewOfThreads, CrewsOnAFullPoolOfTheirOwnDoNotWaitForEachOther) {
    constexpr int kCrews = static_cast<int>(ThreadTaskRunner::limit(Priority::userInitiated)) + 2;
    std::atomic<int> pieces = 0;
    std::latch allEnded(kCrews);
    for (int i = 0; i < kCrews; ++i) {
        threads.run(Priority::userInitiated, [&] {
            Crew<int>::run(threads, Priority::userInitiated, 3, Numbers(50, 1),
                           [&](int, const Others&) { ++pieces; });
            allEnded.count_down();
        });
    }
    allEnded.wait();
    EXPECT_EQ(pieces, kCrews * 50);
}

} // namespace
} // namespace quillane
