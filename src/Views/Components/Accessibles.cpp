#include "Components/Accessibles.h"
#include "Components/Card.h"
#include "Components/FigureRow.h"
#include "Components/ListRow.h"
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
    if (isNameOf<Card>(className)) {
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    }
    if (isNameOf<Stat>(className) || isNameOf<ListRow>(className) || isNameOf<FigureRow>(className)) {
        return new SpokenAsOne(widget);
    }
    return nullptr;
}

} // namespace

void installAccessibles() {
    QAccessible::installFactory(accessibleOf);
}

} // namespace quillane
