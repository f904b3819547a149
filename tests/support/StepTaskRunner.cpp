#include "StepTaskRunner.h"
#include <utility>

namespace quillane {

void StepTaskRunner::runJob(std::size_t index) {
    auto chosen = std::move(m_waiting.at(index));
    m_waiting.erase(m_waiting.begin() + static_cast<std::ptrdiff_t>(index));
    chosen.job();
}

void StepTaskRunner::runAll() {
    runUntil([] { return false; });
}

bool StepTaskRunner::runUntil(const std::function<bool()>& done) {
    settle();
    while (!done()) {
        if (m_waiting.empty()) {
            return false;
        }
        runJob();
        settle();
    }
    return true;
}

} // namespace quillane
