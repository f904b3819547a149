#include "Components/LivingDate.h"
#include "Components/DateWords.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include <QEvent>
#include <QWidget>
#include <utility>

namespace quillane {

LivingDate::LivingDate(Clock& clock, std::function<void()> tell, QWidget* widget)
    : QObject(widget)
    , m_clock(clock)
    , m_tell(std::move(tell))
    , m_widget(*widget)
    , m_timer(clock, [this] { m_tell(); }) {
    widget->installEventFilter(this);
}

void LivingDate::follow(const std::optional<Date>& date) {
    if (std::exchange(m_date, date) != date && m_widget.isVisible()) {
        wait();
    }
    m_tell();
}

QString LivingDate::words() const {
    return quillane::words(Formatting::relativeDescription(m_date, m_clock.now(), m_clock.calendar()));
}

void LivingDate::wait() {
    if (m_date) {
        m_timer.follow(*m_date);
    } else {
        m_timer.stop();
    }
}

// Back in sight or in front, also a wall clock that was set meanwhile shows.
bool LivingDate::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::Hide) {
        m_timer.stop();
    } else if (dateWordsMayDiffer(*event)) {
        m_tell();
        if (m_widget.isVisible()) {
            wait();
        }
    }
    return QObject::eventFilter(object, event);
}

} // namespace quillane
