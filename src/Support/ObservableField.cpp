#include "ObservableField.h"
#include "Observer.h"
#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillane {

namespace {

// Whoever tracks on this thread; the innermost one.
Observer*& tracking() {
    static thread_local Observer* observer = nullptr;
    return observer;
}

} // namespace

Observer::Tracking::Tracking(Observer& observer)
    : m_previous(std::exchange(tracking(), &observer)) {
    observer.forgetFields();
}

Observer::Tracking::~Tracking() {
    tracking() = m_previous;
}

void Observer::forgetFields() {
    for (const auto* field : std::exchange(m_fields, {})) {
        field->leave(*this);
    }
}

ObservableField::~ObservableField() {
    for (auto* observer : m_observers) {
        if (observer != nullptr) {
            std::erase(observer->m_fields, this);
        }
    }
}

void ObservableField::track() const {
    if (auto* observer = tracking()) {
        join(*observer);
    }
}

void ObservableField::tellWillChange() const {
    tell(&Observer::fieldWillChange);
}

void ObservableField::tellDidChange() const {
    tell(&Observer::fieldDidChange);
}

void ObservableField::join(Observer& observer) const {
    if (std::ranges::find(m_observers, &observer) == m_observers.end()) {
        m_observers.push_back(&observer);
        observer.m_fields.push_back(this);
    }
}

void ObservableField::leave(Observer& observer) const {
    if (m_telling > 0) {
        std::ranges::replace(m_observers, &observer, static_cast<Observer*>(nullptr));
    } else {
        std::erase(m_observers, &observer);
    }
}

void ObservableField::tell(void (Observer::*message)()) const {
    ++m_telling;
    const auto count = m_observers.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (auto* observer = m_observers[i]) {
            (observer->*message)();
        }
    }
    if (--m_telling == 0) {
        std::erase(m_observers, nullptr);
    }
}

} // namespace quillane
