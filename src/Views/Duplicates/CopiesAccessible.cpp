#include "Duplicates/CopiesAccessible.h"
#include <QPointer>

namespace quillane {

namespace {

using Part = CopiesList::Part;

// A part of a row. Goes with its row, or with the accessible of its list.
class Item : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    Item(CopiesList& list, const QModelIndex& row, Part part)
        : m_list(&list)
        , m_row(row)
        , m_part(part) {}

    bool isValid() const override { return m_list != nullptr && m_row.isValid(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return owner()->window(); }
    QAccessibleInterface* parent() const override {
        return isChoice() ? static_cast<QAccessibleInterface*>(owner()) : owner()->at(m_row, Part::Choice);
    }
    int childCount() const override { return isChoice() ? 1 : 0; }
    QAccessibleInterface* child(int index) const override {
        return isChoice() && index == 0 ? owner()->at(m_row, Part::Look) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const item = dynamic_cast<const Item*>(child);
        return item != nullptr && isChoice() && !item->isChoice() && item->m_row == m_row ? 0 : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        auto* const look = child(0);
        return look != nullptr && look->rect().contains(x, y) ? look : nullptr;
    }

    QModelIndex row() const { return m_row; }
    bool isChoice() const { return m_part == Part::Choice; }
    QRect rect() const override {
        const QRect place = m_list->placeOf(m_row, m_part);
        return place.isValid() ? QRect(m_list->viewport()->mapToGlobal(place.topLeft()), place.size())
                               : QRect();
    }
    QAccessible::Role role() const override {
        return isChoice() ? QAccessible::RadioButton : QAccessible::Button;
    }
    QAccessible::State state() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text, const QString&) override {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override {
        return canAct() ? QStringList{pressName(), setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QString pressName() const { return isChoice() ? toggleAction() : pressAction(); }
    // As a click could reach it.
    bool canAct() const { return isValid() && m_list->isEnabled() && m_list->isVisible(); }
    CopiesAccessible* owner() const {
        return static_cast<CopiesAccessible*>(QAccessible::queryAccessibleInterface(m_list));
    }

    QPointer<CopiesList> m_list;
    const QPersistentModelIndex m_row;
    const Part m_part;
};

QAccessible::State Item::state() const {
    QAccessible::State state;
    state.invisible = !m_list->isVisible();
    state.disabled = !m_list->isEnabled();
    state.offscreen = !m_list->viewport()->visibleRegion().intersects(m_list->placeOf(m_row, m_part));
    state.focusable = true;
    state.focused = m_list->hasFocus() && m_list->currentIndex() == m_row && m_list->part() == m_part;
    if (isChoice()) {
        state.checkable = true;
        state.checked = m_row.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    }
    return state;
}

QString Item::text(QAccessible::Text which) const {
    switch (which) {
    case QAccessible::Name:
        return isChoice() ? m_row.data(Qt::AccessibleTextRole).toString() : CopiesList::lookName();
    case QAccessible::Description:
        return m_row.data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

void Item::doAction(const QString& name) {
    if (!canAct()) {
        return;
    }
    if (name == pressName()) {
        m_list->press(m_row, m_part);
    } else if (name == setFocusAction()) {
        m_list->go(m_row, m_part);
    }
}

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const list = qobject_cast<CopiesList*>(object);
    return list != nullptr ? new CopiesAccessible(list) : nullptr;
}

} // namespace

CopiesAccessible::CopiesAccessible(CopiesList* list)
    : QAccessibleWidget(list, QAccessible::List) {}

CopiesAccessible::~CopiesAccessible() {
    for (const auto part : {Part::Choice, Part::Look}) {
        for (const auto id : metOf(part)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
}

void CopiesAccessible::install() {
    QAccessible::installFactory(make); // which leaves out what is installed
}

CopiesList& CopiesAccessible::list() const {
    return *static_cast<CopiesList*>(widget());
}

CopiesAccessible& CopiesAccessible::of(CopiesList& list) {
    return *static_cast<CopiesAccessible*>(QAccessible::queryAccessibleInterface(&list));
}

void CopiesAccessible::tellFocus(CopiesList& list) {
    auto* const item = QAccessible::isActive() ? of(list).at(list.currentIndex(), list.part()) : nullptr;
    if (item != nullptr) {
        QAccessibleEvent focus(item, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void CopiesAccessible::tellChoice(CopiesList& list, const QModelIndex& row) {
    auto* const item = QAccessible::isActive() ? of(list).at(row, Part::Choice) : nullptr;
    if (item != nullptr) {
        QAccessible::State changed;
        changed.checked = true; // says which part of the state, not what it is now
        QAccessibleStateChangeEvent choice(item, changed);
        QAccessible::updateAccessibility(&choice);
    }
}

void CopiesAccessible::forgetGone(CopiesList& list) {
    auto& self = of(list);
    for (const auto part : {Part::Choice, Part::Look}) {
        auto& met = self.metOf(part);
        for (auto at = met.begin(); at != met.end();) {
            if (at.key().isValid()) {
                ++at;
            } else {
                QAccessible::deleteAccessibleInterface(at.value());
                at = met.erase(at);
            }
        }
    }
}

int CopiesAccessible::childCount() const {
    return list().model()->rowCount();
}

QAccessibleInterface* CopiesAccessible::child(int index) const {
    return at(list().model()->index(index, 0), Part::Choice);
}

int CopiesAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const item = dynamic_cast<const Item*>(child);
    return item != nullptr && item->isChoice() ? item->row().row() : -1;
}

QAccessibleInterface* CopiesAccessible::childAt(int x, int y) const {
    return at(list().indexAt(list().viewport()->mapFromGlobal(QPoint(x, y))), Part::Choice);
}

QAccessibleInterface* CopiesAccessible::focusChild() const {
    return list().hasFocus() ? at(list().currentIndex(), list().part()) : nullptr;
}

QAccessibleInterface* CopiesAccessible::at(const QModelIndex& row, Part part) const {
    if (!row.isValid()) {
        return nullptr;
    }
    auto& met = metOf(part);
    if (const auto found = met.constFind(row); found != met.constEnd()) {
        return QAccessible::accessibleInterface(*found);
    }
    auto* const item = new Item(list(), row, part);
    met.insert(row, QAccessible::registerAccessibleInterface(item));
    return item;
}

} // namespace quillane
