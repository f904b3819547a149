#include "Components/SearchField.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include <QAction>
#include <QKeyEvent>
#include <QToolButton>

namespace quillane {

namespace {
constexpr int kLessAir = 5; // than a field leaves between its symbol and its text
}

SearchField::SearchField(QWidget* parent)
    : TextField(parent) {
    setPlaceholderText(QStringLiteral("Search"));
    setAccessibleName(QStringLiteral("Search"));
    auto* const magnifier =
        addAction(Symbols::icon(QStringLiteral("magnifyingglass"), Tint::Tertiary), LeadingPosition);
    setClearButtonEnabled(true);
    setTextMargins(-kLessAir, 0, 0, 0);
    Fonts::follow(this, [this] {
        setFont(Fonts::of(13));
        setFixedSize(sizeHint());
    });
    nameButtons(magnifier);
}

// The base makes its buttons without words. The magnifier is one too, so it does what its name says.
void SearchField::nameButtons(QAction* magnifier) {
    const auto name = [](QAction* action, const QString& words) {
        action->setText(words);
        action->setToolTip(words);
    };
    name(magnifier, QStringLiteral("Search"));
    connect(magnifier, &QAction::triggered, this, [this] {
        setFocus(Qt::MouseFocusReason);
        selectAll();
    });
    name(findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction")), QStringLiteral("Clear"));
}

// The base lays its buttons out as large as their symbols.
void SearchField::growButtons() {
    constexpr int kLeastSide = 26;
    for (auto* const button : findChildren<QToolButton*>()) {
        QRect place = button->geometry();
        const QSize size = place.size().expandedTo({kLeastSide, kLeastSide});
        place = QRect(place.center() - QRect({}, size).center(), size);
        button->setGeometry(place);
    }
}

bool SearchField::event(QEvent* event) {
    const bool isDone = TextField::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutDirectionChange) {
        growButtons();
    }
    return isDone;
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
    TextField::keyPressEvent(event);
}

} // namespace quillane
