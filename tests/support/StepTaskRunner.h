#pragma once
#include "MainQueue.h"
#include "TaskRunner.h"
#include <cstddef>
#include <deque>
#include <functional>
#include <vector>

namespace quillane {

// A runner that does nothing by itself: the test runs jobs one at a time, in whatever order it likes, and
// gives the main thread its turns. All on the test's own thread.
class StepTaskRunner final : public TaskRunner {
  public:
    void run(Priority priority, Job job) override {
        m_history.push_back(priority);
        m_waiting.push_back({priority, std::move(job)});
    }
    void post(Job job) override { m_mainQueue.post(std::move(job)); }

    // One turn of the main thread: what is posted now.
    void turn() { m_mainQueue.drainOnce(); }
    // Turns until nothing is posted. Jobs of the pools stay where they are.
    void settle() { m_mainQueue.drain(); }
    // Runs one waiting job of a pool, counted from the oldest, without a turn after it.
    void runJob(std::size_t index = 0);
    // Runs everything, oldest first, until nothing is left to do.
    void runAll();
    // The same until `done` is true, asked after each job and the turns that follow. False when all ran dry.
    bool runUntil(const std::function<bool()>& done);

    std::size_t waitingJobs() const { return m_waiting.size(); }
    Priority waitingPriority(std::size_t index) const { return m_waiting.at(index).priority; }
    // The priorities of all jobs so far, in the order of the calls.
    const std::vector<Priority>& history() const { return m_history; }
    void clearHistory() { m_history.clear(); }

  private:
    struct Waiting {
        Priority priority;
        Job job;
    };
    std::deque<Waiting> m_waiting;
    std::vector<Priority> m_history;
    MainQueue m_mainQueue;
};

} // namespace quillane
