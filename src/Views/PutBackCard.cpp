#include "PutBackCard.h"
#include "Clock.h"
#include "Formatting.h"
#include "PushButton.h"
#include "ShownText.h"
#include "UndoableOperation.h"

namespace quillane {

PutBackCard::PutBackCard(QWidget* parent)
    : ActionCard(QStringLiteral("arrow.uturn.backward.circle.fill"), Tint::Link, parent)
    , m_putBack(new PushButton(QStringLiteral("Put Back"))) {
    addButton(m_putBack);
}

void PutBackCard::show(const UndoableOperation& operation, const Clock& clock) {
    setTexts(QStringLiteral("Last cleanup: ") + shownName(operation.label), // may hold an application's name
             words(Formatting::number(static_cast<std::int64_t>(operation.moves.size())) + " item(s), " +
                   Formatting::byteCount(operation.bytes) + ", " +
                   Formatting::relativeDescription(operation.date, clock.now(), clock.calendar()) +
                   ". Still in the Trash, so it can go back."));
}

} // namespace quillane
