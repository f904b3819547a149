#include "Overview/PutBackCard.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "UndoableOperation.h"

namespace quillane {

PutBackCard::PutBackCard(Clock& clock, QWidget* parent)
    : DatedCard(QStringLiteral("arrow.uturn.backward.circle.fill"), Tint::Link, clock, parent)
    , m_putBack(new PushButton(QStringLiteral("Put Back"))) {
    addButton(m_putBack);
}

void PutBackCard::setOperation(const UndoableOperation& operation) {
    m_title = QStringLiteral("Last cleanup: ") + shownName(operation.label); // may hold an application's name
    m_figures = words(Formatting::number(static_cast<std::int64_t>(operation.moves.size())) + " item(s), " +
                      Formatting::byteCount(operation.bytes));
    follow(operation.date);
}

void PutBackCard::tell() {
    setTexts(m_title, m_figures + QStringLiteral(", ") + when() +
                          QStringLiteral(". Still in the Trash, so it can go back."));
}

} // namespace quillane
