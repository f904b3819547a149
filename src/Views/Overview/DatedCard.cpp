#include "Overview/DatedCard.h"
#include "Components/DateWords.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include <QEvent>
#include <utility>

namespace quillane {

DatedCard::DatedCard(const QString& symbol, Tint tint, Clock& clock, QWidget* parent)
    : ActionCard(symbol, tint, parent)
    , m_clock(clock)
    , m_timer(clock, [this] { tell(); }) {}

void DatedCard::follow(Date date) {
    if (std::exchange(m_date, date) != date && isVisible()) {
        m_timer.follow(m_date);
    }
    tell();
}

QString DatedCard::when() const {
    return words(Formatting::relativeDescription(m_date, m_clock.now(), m_clock.calendar()));
}

// Back in sight or in front, also a wall clock that was set meanwhile shows.
bool DatedCard::event(QEvent* event) {
    if (event->type() == QEvent::Hide) {
        m_timer.stop();
    } else if (dateWordsMayDiffer(*event)) {
        tell();
        if (isVisible()) {
            m_timer.follow(m_date);
        }
    }
    return ActionCard::event(event);
}

} // namespace quillane
