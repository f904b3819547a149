#include "Components/Accessibles.h"
#include "Components/Badge.h"
#include "Components/Card.h"
#include "Components/FigureRow.h"
#include "Components/ListRow.h"
#include "Components/PaneScroll.h"
#include "Components/Sheet.h"
#include "Components/Stat.h"
#include <QAccessibleWidget>

namespace quillane {

namespace {

class SpokenAsOne : public QAccessibleWidget {
  public:
    explicit SpokenAsOne(QWidget* widget)
        : QAccessibleWidget(widget, QAccessible::StaticText) {}

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
};

// The base tells a window, a group with a name and a drawing as it tells what merely holds others.
class Plain : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    QAccessible::Role role() const override {
        if (widget()->isWindow()) {
            return widget()->windowType() == Qt::Window ? QAccessible::Window : QAccessible::Dialog;
        }
        if (widget()->focusPolicy() != Qt::NoFocus) {
            return QAccessible::Grouping;
        }
        if (widget()->accessibleName().isEmpty()) {
            return QAccessible::Client;
        }
        return childCount() == 0 ? QAccessible::Graphic : QAccessible::Grouping;
    }
};

// The base does not tell that nothing else can be worked meanwhile.
class ModalDialog : public QAccessibleWidget {
  public:
    explicit ModalDialog(QWidget* dialog)
        : QAccessibleWidget(dialog, QAccessible::Dialog) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->isModal();
        return state;
    }
};

template <class Widget>
bool isNameOf(const QString& className) {
    return className == QLatin1String(Widget::staticMetaObject.className());
}

// Asked for a class and then for those that it derives from, until one has an answer.
QAccessibleInterface* accessibleOf(const QString& className, QObject* object) {
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    if (isNameOf<Card>(className) || isNameOf<PaneScroll>(className)) {
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    }
    if (isNameOf<Stat>(className) || isNameOf<ListRow>(className) || isNameOf<FigureRow>(className) ||
        isNameOf<Badge>(className)) {
        return new SpokenAsOne(widget);
    }
    if (isNameOf<Sheet>(className)) {
        return new ModalDialog(widget);
    }
    return isNameOf<QWidget>(className) ? new Plain(widget) : nullptr;
}

} // namespace

void installAccessibles() {
    QAccessible::installFactory(accessibleOf);
}

} // namespace quillane
