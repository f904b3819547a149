#pragma once
#include "MainQueue.h"
#include "TaskRunner.h"
#include <array>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace quillane {

// Threads for run(), a queue for post(). Threads are made when work comes that no idle one can take; they
// wait without using CPU. Declare it after all that jobs use: its destructor drops what has not begun and
// waits for what has.
class ThreadTaskRunner final : public TaskRunner {
  public:
    // The most threads of a pool. Utility has room for icons beside a batch of six bundles being measured.
    static constexpr std::size_t limit(Priority priority) {
        switch (priority) {
        case Priority::userInitiated:
            return 6;
        case Priority::utility:
            return 8;
        case Priority::background:
            return 4;
        }
        return 1;
    }

    // The queue must outlive the runner.
    explicit ThreadTaskRunner(MainQueue& mainQueue);
    ~ThreadTaskRunner() override;
    ThreadTaskRunner(const ThreadTaskRunner&) = delete;
    ThreadTaskRunner& operator=(const ThreadTaskRunner&) = delete;

    void run(Priority priority, Job job) override;
    void post(Job job) override;

  private:
    class Pool {
      public:
        explicit Pool(Priority priority)
            : m_priority(priority) {}
        void add(Job job);
        // Two steps, so that all pools finish side by side.
        void requestStop();
        void join();

      private:
        void work();

        const Priority m_priority;
        std::mutex m_mutex; // guards everything below
        std::condition_variable m_changed;
        std::deque<Job> m_waiting;
        std::vector<std::thread> m_threads;
        std::size_t m_idle = 0;
        bool m_stopping = false;
    };

    Pool& pool(Priority priority) { return m_pools[static_cast<std::size_t>(priority)]; }

    MainQueue& m_mainQueue;
    std::array<Pool, 3> m_pools{Pool(Priority::userInitiated), Pool(Priority::utility),
                                Pool(Priority::background)};
};

} // namespace quillane
