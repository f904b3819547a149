#include "SearchField.h"
#include "Fonts.h"
#include "Symbols.h"
#include <QKeyEvent>

namespace quillane {

namespace {
constexpr int kLessAir = 5; // than a field leaves between its symbol and its text
}

SearchField::SearchField(QWidget* parent)
    : QLineEdit(parent) {
    setPlaceholderText(QStringLiteral("Search"));
    setAccessibleName(QStringLiteral("Search"));
    addAction(Symbols::icon(QStringLiteral("magnifyingglass"), Tint::Tertiary), QLineEdit::LeadingPosition);
    setClearButtonEnabled(true);
    setTextMargins(-kLessAir, 0, 0, 0);
    Fonts::follow(this, [this] {
        setFont(Fonts::of(13));
        setFixedSize(sizeHint());
    });
}

QSize SearchField::sizeHint() const {
    return {kWidth, Fonts::rowHeight(28)};
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace quillane
