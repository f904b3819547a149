#pragma once
#include "MainQueue.h"
#include "PosixDirectoryWatch.h"
#include "TemporaryFolder.h"
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

// What the tests of a watch of folders stand on, those for every system and those for one.
namespace quillane {

inline constexpr auto kWatchLimit = std::chrono::milliseconds(30'000); // no test comes near it

// A main thread that counts what is posted to it, and can hold up whoever posts.
class MainThread final : public TaskRunner {
  public:
    void run(Priority, Job) override { std::abort(); } // watching needs no pool
    void post(Job job) override {
        std::unique_lock lock(m_mutex);
        ++m_posts;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_holds; });
        lock.unlock();
        m_queue.post(std::move(job));
    }

    int posts() {
        const std::lock_guard lock(m_mutex);
        return m_posts;
    }
    // False when the limit passes first.
    bool waitForPosts(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kWatchLimit, [&] { return m_posts >= count; });
    }
    void hold(bool holds) {
        const std::lock_guard lock(m_mutex);
        m_holds = holds;
        m_changed.notify_all();
    }
    bool runUntil(const std::function<bool()>& done) { return m_queue.runUntil(done, kWatchLimit); }

  private:
    MainQueue m_queue;
    std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    int m_posts = 0;
    bool m_holds = false;
};

// Each subject makes something happen directly inside a folder, which it lays at need.
class OnDisk {
  public:
    explicit OnDisk(TaskRunner& runner)
        : watch(runner) {}

    FileURL folder(const std::string& name) {
        disk.folder(name);
        return disk.url(name);
    }
    FileURL unwatchable(const std::string& name) { return disk.url(name); }
    void happen(const std::string& name) { disk.file(name + "/" + std::to_string(++m_last), "x"); }

    TemporaryFolder disk;
    PosixDirectoryWatch watch;

  private:
    int m_last = 0;
};

template <class Subject>
class DirectoryWatchContract : public testing::Test {
  protected:
    using Source = std::unique_ptr<DirectoryWatch::Source>;

    Source counting(const std::string& name, int& told) {
        return subject.watch.watch(subject.folder(name), [&told] { ++told; });
    }
    bool runUntil(const std::function<bool()>& done) { return runner.runUntil(done); }
    // When this returns, all that happened before has been told.
    testing::AssertionResult catchUp() {
        int told = 0;
        const auto source = counting("mark", told);
        subject.happen("mark");
        return runUntil([&] { return told > 0; }) ? testing::AssertionSuccess()
                                                  : testing::AssertionFailure() << "the mark was not told";
    }

    MainThread runner;
    Subject subject{runner};
};

// What becomes of a folder on the disk.
struct WatchedFolder : DirectoryWatchContract<OnDisk> {
    WatchedFolder() {
        disk.folder("watched").folder("elsewhere");
        source = counting("watched", told);
    }
    testing::AssertionResult isTold() {
        return runUntil([&] { return told > 0; }) ? testing::AssertionSuccess()
                                                  : testing::AssertionFailure() << "nothing was told";
    }
    // What was told so far has been heard; only what comes next counts.
    void forget() {
        ASSERT_TRUE(catchUp());
        told = 0;
    }

    TemporaryFolder& disk = subject.disk;
    int told = 0;
    std::unique_ptr<DirectoryWatch::Source> source;
};

} // namespace quillane
