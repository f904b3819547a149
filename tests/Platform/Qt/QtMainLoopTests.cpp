#include "MainQueue.h"
#include "QtMainLoop.h"
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace quillane {
namespace {

TEST(QtMainLoop, JobsPostedOnAnotherThreadRunInTheEventLoop) {
    MainQueue queue;
    const QtMainLoop loop(queue);
    QEventLoop events;
    const auto main = std::this_thread::get_id();
    bool onMain = false;
    std::thread poster([&] {
        queue.post([&] {
            onMain = std::this_thread::get_id() == main;
            events.quit();
        });
    });
    events.exec();
    poster.join();
    EXPECT_TRUE(onMain);
}

TEST(QtMainLoop, JobsPostedBeforeItWasMadeRunToo) {
    MainQueue queue;
    QEventLoop events;
    bool ran = false;
    queue.post([&] {
        ran = true;
        events.quit();
    });
    const QtMainLoop loop(queue);
    events.exec();
    EXPECT_TRUE(ran);
}

// A job that posts itself again for ever must not keep the loop from its other work.
TEST(QtMainLoop, TheLoopGetsItsTurnBetweenJobsThatPostEachOther) {
    MainQueue queue;
    const QtMainLoop loop(queue);
    QEventLoop events;
    int jobs = 0;
    std::function<void()> again = [&] {
        ++jobs;
        queue.post(again);
    };
    queue.post(again);
    QTimer::singleShot(0, &events, [&] { QTimer::singleShot(0, &events, &QEventLoop::quit); });
    events.exec();
    EXPECT_GE(jobs, 1);
    EXPECT_LT(jobs, 1000);
}

TEST(QtMainLoop, AJobThatRunsALoopOfItsOwnDoesNotHoldUpTheJobsBehindIt) {
    MainQueue queue;
    const QtMainLoop loop(queue);
    QEventLoop outer;
    std::string order;
    queue.post([&] {
        order += "(";
        QEventLoop inner;
        queue.post([&] { inner.quit(); });
        inner.exec();
        order += ")";
        outer.quit();
    });
    queue.post([&] { order += "behind"; });
    outer.exec();
    EXPECT_EQ(order, "(behind)");
}

TEST(QtMainLoop, AfterItIsGonePostsWaitQuietly) {
    MainQueue queue;
    {
        const QtMainLoop loop(queue);
    }
    bool ran = false;
    queue.post([&] { ran = true; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
    queue.drain();
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace quillane
