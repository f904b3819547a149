#include "Overview/PutBackCard.h"
#include "Components/DateWords.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "UndoableOperation.h"
#include <QEvent>
#include <utility>

namespace quillane {

PutBackCard::PutBackCard(Clock& clock, QWidget* parent)
    : ActionCard(QStringLiteral("arrow.uturn.backward.circle.fill"), Tint::Link, parent)
    , m_clock(clock)
    , m_timer(clock, [this] { tell(); })
    , m_putBack(new PushButton(QStringLiteral("Put Back"))) {
    addButton(m_putBack);
}

void PutBackCard::setOperation(const UndoableOperation& operation) {
    m_title = QStringLiteral("Last cleanup: ") + shownName(operation.label); // may hold an application's name
    m_figures = words(Formatting::number(static_cast<std::int64_t>(operation.moves.size())) + " item(s), " +
                      Formatting::byteCount(operation.bytes));
    if (std::exchange(m_date, operation.date) != operation.date && isVisible())
        m_timer.follow(m_date);
    tell();
}

void PutBackCard::tell() {
    const QString when = words(Formatting::relativeDescription(m_date, m_clock.now(), m_clock.calendar()));
    setTexts(m_title, m_figures + QStringLiteral(", ") + when +
                          QStringLiteral(". Still in the Trash, so it can go back."));
}

// Back in sight or in front, also a wall clock that was set meanwhile shows.
bool PutBackCard::event(QEvent* event) {
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
