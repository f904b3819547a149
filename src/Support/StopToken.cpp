#include "StopToken.h"

namespace quillane {

void StopSource::requestStop() const {
    if (m_state->requested.exchange(true, std::memory_order_acq_rel)) {
        return;
    }
    for (;;) {
        std::function<void()> next;
        {
            const std::lock_guard lock(m_state->mutex);
            if (m_state->callbacks.empty()) {
                return;
            }
            next = std::move(m_state->callbacks.front().second);
            m_state->callbacks.erase(m_state->callbacks.begin());
        }
        next();
    }
}

StopCallback::StopCallback(const StopToken& token, std::function<void()> function) : m_state(token.m_state) {
    if (!m_state) {
        return;
    }
    {
        const std::lock_guard lock(m_state->mutex);
        if (!m_state->requested.load(std::memory_order_acquire)) {
            m_state->callbacks.emplace_back(this, std::move(function));
            return;
        }
    }
    function();
}

StopCallback::~StopCallback() {
    if (m_state) {
        const std::lock_guard lock(m_state->mutex);
        std::erase_if(m_state->callbacks, [this](const auto& entry) { return entry.first == this; });
    }
}

} // namespace quillane
