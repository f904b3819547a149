#include "StopToken.h"
#include <algorithm>

namespace quillane {

void StopSource::requestStop() const {
    const auto state = m_state; // a callback may destroy this source
    if (state->requested.exchange(true, std::memory_order_acq_rel)) {
        return;
    }
    for (;;) {
        std::function<void()> next;
        {
            const std::lock_guard lock(state->mutex);
            if (state->callbacks.empty()) {
                return;
            }
            next = std::move(state->callbacks.front().second);
            state->callbacks.erase(state->callbacks.begin());
        }
        next();
    }
}

StopCallback::StopCallback(const StopToken& token, std::function<void()> function) {
    if (!token.m_state) {
        return;
    }
    {
        const std::lock_guard lock(token.m_state->mutex);
        if (!token.m_state->requested.load(std::memory_order_acquire)) {
            token.m_state->callbacks.emplace_back(this, std::move(function));
            m_state = token.m_state;
            return;
        }
    }
    function();
}

StopCallback::~StopCallback() {
    if (!m_state) {
        return;
    }
    std::function<void()> mine; // what it captured goes after the lock is released
    const std::lock_guard lock(m_state->mutex);
    const auto at =
        std::ranges::find(m_state->callbacks, this, [](const auto& entry) { return entry.first; });
    if (at != m_state->callbacks.end()) {
        mine = std::move(at->second);
        m_state->callbacks.erase(at);
    }
}

} // namespace quillane
