#include "MainQueue.h"
#include "SystemCalls.h"
#include "ThreadTaskRunner.h"
#include <functional>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace quillane {
namespace {

// Does something when the last copy of a job goes.
struct AtTheEnd {
    std::function<void()> work;
    ~AtTheEnd() { work(); }
};

TEST(JobScope, EachJobOfAPoolHasAPoolOfItsOwnThatEndsWithIt) {
    for (const auto priority : {Priority::userInitiated, Priority::utility, Priority::background}) {
        MainQueue queue;
        ThreadTaskRunner runner(queue);
        for (int job = 0; job < 100; ++job) { // more than there are threads
            std::promise<int> held;
            runner.run(priority, [&held] { held.set_value(SystemCalls::heldPools()); });
            ASSERT_EQ(held.get_future().get(), 1);
        }
    }
}

TEST(JobScope, WhatAJobOwnsGoesBeforeItsPool) {
    MainQueue queue;
    ThreadTaskRunner runner(queue);
    std::promise<int> held;
    auto owned = std::make_shared<AtTheEnd>([&held] { held.set_value(SystemCalls::heldPools()); });
    runner.run(Priority::utility, [owned = std::exchange(owned, nullptr)] {});
    EXPECT_EQ(held.get_future().get(), 1);
}

} // namespace
} // namespace quillane
