#pragma once
#include "TaskRunner.h"
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>

namespace quillane {

// The jobs that wait for the main thread, first in first out. Any thread posts; the main thread runs them,
// from whatever loop it has. Jobs that have not run when the queue is destroyed are dropped.
class MainQueue {
  public:
    // How the main thread learns that it should call drainOnce(). Called from any thread under the queue's
    // lock, so it must not call the queue; it must be cheap, and may be called again before the drain.
    // Whenever a job waits, a wake has been asked for since the last drain began, also while a job runs:
    // one that opens a nested loop does not hold up the others. Setting it asks at once if jobs wait;
    // setting an empty function returns when no call is under way.
    void setWake(std::function<void()> wake);

    // Any thread.
    void post(Job job);

    // Runs the jobs that wait now, and not those that they post, so that a loop gets its turn between.
    // Tells whether there was any. May be called from inside a job. Main thread only.
    bool drainOnce();
    // Runs jobs until none waits. Tells whether there was any. Main thread only.
    bool drain();
    // Runs jobs and blocks for more until `done` is true, which is asked before each job. False when `limit`
    // passes first. For loops without a toolkit. Main thread only.
    bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);

  private:
    struct Entry {
        std::uint64_t number; // counts the posts
        Job job;
    };

    void askForWake(); // the lock is held
    bool runOneUpTo(std::uint64_t number);

    std::mutex m_mutex; // guards everything below
    std::condition_variable m_posted;
    std::deque<Entry> m_entries;
    std::uint64_t m_lastNumber = 0;
    std::function<void()> m_wake;
    bool m_wakeAsked = false; // since the last drain began
};

} // namespace quillane
