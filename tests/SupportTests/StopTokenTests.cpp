#include "StopToken.h"
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace quillane {
namespace {

TEST(StopToken, ATokenOfNoSourceIsNeverAskedToStop) {
    EXPECT_FALSE(StopToken().stopRequested());
}

TEST(StopToken, ARequestReachesEveryTokenOfTheSource) {
    const StopSource source;
    const StopToken early = source.token();
    const StopSource copy = source;
    copy.requestStop();
    EXPECT_TRUE(early.stopRequested());
    EXPECT_TRUE(source.token().stopRequested());
    EXPECT_TRUE(source.stopRequested());
}

TEST(StopToken, ATokenOutlivesItsSource) {
    StopToken token;
    {
        const StopSource source;
        token = source.token();
        source.requestStop();
    }
    EXPECT_TRUE(token.stopRequested());
}

TEST(StopToken, ARequestIsSeenOnAnotherThread) {
    const StopSource source;
    bool seen = false;
    std::thread worker([token = source.token(), &seen] {
        while (!token.stopRequested()) {
            std::this_thread::yield();
        }
        seen = true;
    });
    source.requestStop();
    worker.join();
    EXPECT_TRUE(seen);
}

TEST(StopCallback, CallbacksRunOnceInTheOrderOfTheirMaking) {
    const StopSource source;
    std::string calls;
    const StopCallback first(source.token(), [&] { calls += "1"; });
    const StopCallback second(source.token(), [&] { calls += "2"; });
    source.requestStop();
    source.requestStop();
    EXPECT_EQ(calls, "12");
}

TEST(StopCallback, OneMadeAfterTheRequestRunsAtOnce) {
    const StopSource source;
    source.requestStop();
    int calls = 0;
    const StopCallback late(source.token(), [&] { ++calls; });
    EXPECT_EQ(calls, 1);
}

TEST(StopCallback, OneThatWasDestroyedNeverRuns) {
    const StopSource source;
    int calls = 0;
    {
        const StopCallback gone(source.token(), [&] { ++calls; });
    }
    source.requestStop();
    EXPECT_EQ(calls, 0);
}

TEST(StopCallback, OfATokenWithoutSourceNeverRuns) {
    int calls = 0;
    {
        const StopCallback callback(StopToken(), [&] { ++calls; });
    }
    EXPECT_EQ(calls, 0);
}

TEST(StopCallback, ACallbackMayDestroyTheNextOne) {
    const StopSource source;
    std::string calls;
    std::optional<StopCallback> second;
    const StopCallback first(source.token(), [&] {
        calls += "1";
        second.reset();
    });
    second.emplace(source.token(), [&] { calls += "2"; });
    source.requestStop();
    EXPECT_EQ(calls, "1");
}

TEST(StopCallback, ACallbackMayDestroyItself) {
    const StopSource source;
    int calls = 0;
    std::optional<StopCallback> callback;
    callback.emplace(source.token(), [&] {
        ++calls;
        callback.reset();
    });
    source.requestStop();
    EXPECT_EQ(calls, 1);
}

TEST(StopCallback, ACallbackMayDestroyTheSource) {
    auto source = std::make_unique<StopSource>();
    std::string calls;
    const StopCallback first(source->token(), [&] {
        calls += "1";
        source.reset();
    });
    const StopCallback second(source->token(), [&] { calls += "2"; });
    source->requestStop();
    EXPECT_EQ(calls, "12");
}

} // namespace
} // namespace quillane
