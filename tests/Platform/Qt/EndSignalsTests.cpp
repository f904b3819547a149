#include "EndSignals.h"
#include <QCoreApplication>
#include <QTest>
#include <csignal>
#include <gtest/gtest.h>

namespace quillane {
namespace {

constexpr int kPatience = 10'000; // milliseconds

auto handlerOf(int signal) {
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

TEST(EndSignals, EachSignalThatAsksForTheEndIsToldAtALaterTurn) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        int asked = 0;
        const EndSignals ends([&asked] { ++asked; });
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_EQ(asked, 0);
        EXPECT_TRUE(QTest::qWaitFor([&asked] { return asked > 0; }, kPatience)) << signal;
        QCoreApplication::processEvents();
        EXPECT_EQ(asked, 1) << signal;
    }
}

TEST(EndSignals, WhoAsksTwiceEndsTheProgramAtOnce) {
    const EndSignals ends([] {});
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_EQ(handlerOf(SIGTERM), SIG_DFL);
    EXPECT_NE(handlerOf(SIGINT), SIG_DFL) << "another one is heard";
}

TEST(EndSignals, WhatWasIgnoredWhenItBeganStaysIgnored) {
    ASSERT_NE(std::signal(SIGHUP, SIG_IGN), SIG_ERR);
    {
        const EndSignals ends([] {});
        EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
    }
    EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
    ASSERT_NE(std::signal(SIGHUP, SIG_DFL), SIG_ERR);
}

TEST(EndSignals, WithoutTheObjectAllIsAsItWas) {
    {
        const EndSignals ends([] {});
    }
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EXPECT_EQ(handlerOf(signal), SIG_DFL) << signal;
    }
}

} // namespace
} // namespace quillane
