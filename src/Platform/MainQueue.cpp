#include "MainQueue.h"
#include <limits>
#include <utility>

namespace quillane {

void MainQueue::setWake(std::function<void()> wake) {
    const std::lock_guard lock(m_mutex);
    m_wake = std::move(wake);
    m_wakeAsked = false;
    if (!m_entries.empty()) {
        askForWake();
    }
}

void MainQueue::post(Job job) {
    const std::lock_guard lock(m_mutex);
    m_entries.push_back({++m_lastNumber, std::move(job)});
    askForWake();
    m_posted.notify_one();
}

void MainQueue::askForWake() {
    if (m_wake && !m_wakeAsked) {
        m_wakeAsked = true;
        m_wake();
    }
}

bool MainQueue::drainOnce() {
    std::uint64_t last = 0;
    {
        const std::lock_guard lock(m_mutex);
        last = m_lastNumber;
        m_wakeAsked = false;
    }
    bool any = false;
    while (runOneUpTo(last)) {
        any = true;
    }
    return any;
}

bool MainQueue::drain() {
    bool any = false;
    while (runOneUpTo(std::numeric_limits<std::uint64_t>::max())) {
        any = true;
    }
    return any;
}

// Jobs stay in the queue until their turn comes, so a nested drain goes on where the outer one stands.
bool MainQueue::runOneUpTo(std::uint64_t number) {
    Job job;
    {
        const std::lock_guard lock(m_mutex);
        if (m_entries.empty() || m_entries.front().number > number) {
            return false;
        }
        job = std::move(m_entries.front().job);
        m_entries.pop_front();
        if (!m_entries.empty()) {
            askForWake();
        }
    }
    job();
    return true;
}

bool MainQueue::runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        {
            std::unique_lock lock(m_mutex);
            if (!m_posted.wait_until(lock, end, [this] { return !m_entries.empty(); })) {
                return false;
            }
        }
        runOneUpTo(std::numeric_limits<std::uint64_t>::max());
    }
    return true;
}

} // namespace quillane
