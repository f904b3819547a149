#include "Tables/HeaderAccessible.h"
#include "Tables/HeaderView.h"

namespace quillane {

namespace {

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const header = qobject_cast<HeaderView*>(object);
    return header != nullptr ? new HeaderAccessible(header) : nullptr;
}

} // namespace

HeaderAccessible::HeaderAccessible(HeaderView* header)
    : QAccessibleWidget(header, QAccessible::ColumnHeader) {}

void HeaderAccessible::install() {
    QAccessible::installFactory(make); // which leaves out what is installed
}

HeaderView& HeaderAccessible::header() const {
    return *static_cast<HeaderView*>(widget());
}

QStringList HeaderAccessible::actionNames() const {
    QStringList names;
    if (const int column = header().focusedColumn(); column >= 0 && header().isSortable(column)) {
        names << pressAction();
    }
    return header().isEnabled() ? names << setFocusAction() : QStringList();
}

void HeaderAccessible::doAction(const QString& name) {
    if (name == pressAction()) {
        header().sortByFocusedColumn();
    } else {
        QAccessibleWidget::doAction(name);
    }
}

QString HeaderAccessible::text(QAccessible::Text which) const {
    const int column = header().focusedColumn();
    if (column >= 0 && which == QAccessible::Name) {
        return header().model()->headerData(column, Qt::Horizontal).toString();
    }
    if (column >= 0 && which == QAccessible::Description) {
        return header().model()->headerData(column, Qt::Horizontal, Qt::AccessibleDescriptionRole).toString();
    }
    return QAccessibleWidget::text(which);
}

QAccessible::State HeaderAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = true;
    return state;
}

} // namespace quillane
