#include "ThreadTaskRunner.h"
#include "CloudFetching.h"
#include "JobScope.h"
#include "ThreadPriority.h"
#include <utility>

namespace quillane {
namespace {

// What the job owns goes before the scope does: emptied and not moved, as some libraries leave a copy behind.
void runInScope(Job& job) {
    const JobScope scope;
    job();
    job = nullptr;
}

} // namespace

ThreadTaskRunner::ThreadTaskRunner(MainQueue& mainQueue)
    : m_mainQueue(mainQueue) {}

ThreadTaskRunner::~ThreadTaskRunner() {
    for (auto& pool : m_pools) {
        pool.requestStop();
    }
    for (auto& pool : m_pools) {
        pool.join();
    }
}

void ThreadTaskRunner::run(Priority priority, Job job) {
    pool(priority).add(std::move(job));
}

void ThreadTaskRunner::post(Job job) {
    m_mainQueue.post(std::move(job));
}

void ThreadTaskRunner::Pool::add(Job job) {
    const std::lock_guard lock(m_mutex);
    if (m_stopping) {
        return; // a job that was still running asked for more
    }
    m_waiting.push_back(std::move(job));
    if (m_waiting.size() > m_idle && m_threads.size() < limit(m_priority)) {
        m_threads.emplace_back([this] { work(); });
    } else {
        m_changed.notify_one();
    }
}

void ThreadTaskRunner::Pool::work() {
    setPriorityOfCurrentThread(m_priority);
    // Nobody waits for a network because folders are walked or files compared.
    CloudFetching::setForCurrentThread(CloudFetching::Policy::forbidden);
    for (;;) {
        Job job;
        {
            std::unique_lock lock(m_mutex);
            ++m_idle;
            m_changed.wait(lock, [this] { return m_stopping || !m_waiting.empty(); });
            --m_idle;
            if (m_stopping) {
                return;
            }
            job = std::move(m_waiting.front());
            m_waiting.pop_front();
        }
        runInScope(job);
    }
}

void ThreadTaskRunner::Pool::requestStop() {
    std::deque<Job> dropped; // what the jobs own goes after the lock is released
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
    dropped.swap(m_waiting);
    m_changed.notify_all();
}

void ThreadTaskRunner::Pool::join() {
    for (auto& thread : m_threads) { // nobody adds to it any more
        thread.join();
    }
}

} // namespace quillane
