#include "Review/SweepReviewAccessible.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include <QPointer>

namespace quillane {

namespace {

// A category, which holds its rows, or a row, which can be ticked. Goes with the accessible of its list.
class Item : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    Item(SweepReviewList& list, const QModelIndex& index)
        : m_list(&list)
        , m_index(index) {}

    bool isValid() const override { return m_list != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override {
        return isRow() ? owner()->at(m_index.parent()) : static_cast<QAccessibleInterface*>(owner());
    }
    int childCount() const override { return m_list->model()->rowCount(m_index); }
    QAccessibleInterface* child(int index) const override {
        return owner()->at(m_list->model()->index(index, 0, m_index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const item = dynamic_cast<const Item*>(child);
        return item != nullptr && item->m_index.parent() == m_index ? item->m_index.row() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        auto* const found = owner()->childAt(x, y);
        return found != nullptr && indexOfChild(found) >= 0 ? found : nullptr;
    }

    QModelIndex index() const { return m_index; }
    QRect rect() const override {
        const QRect place = m_list->visualRect(m_index);
        return place.isValid() ? QRect(m_list->viewport()->mapToGlobal(place.topLeft()), place.size())
                               : QRect();
    }
    QAccessible::Role role() const override {
        return isRow() ? QAccessible::CheckBox : QAccessible::Grouping;
    }
    QAccessible::State state() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text, const QString&) override {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface && isRow()
                   ? static_cast<QAccessibleActionInterface*>(this)
                   : nullptr;
    }
    QStringList actionNames() const override {
        return canAct() ? QStringList{toggleAction(), setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    // As a click could reach it: not once the review is over.
    bool canAct() const { return m_list->isEnabled() && m_list->isVisible(); }
    bool isRow() const { return SweepReviewModel::isEntry(m_index); }
    SweepReviewAccessible* owner() const {
        return static_cast<SweepReviewAccessible*>(QAccessible::queryAccessibleInterface(m_list));
    }

    QPointer<SweepReviewList> m_list;
    const QModelIndex m_index;
};

QAccessible::State Item::state() const {
    QAccessible::State state;
    state.invisible = !m_list->isVisible();
    state.disabled = !m_list->isEnabled();
    state.offscreen = !m_list->viewport()->rect().intersects(m_list->visualRect(m_index));
    if (isRow()) {
        state.checkable = true;
        state.checked = m_index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        state.focusable = true;
        state.focused = m_list->hasFocus() && m_list->currentIndex() == m_index;
    }
    return state;
}

QString Item::text(QAccessible::Text which) const {
    switch (which) {
    case QAccessible::Name:
        return m_index.data(Qt::AccessibleTextRole).toString();
    case QAccessible::Description:
        return m_index.data(Qt::AccessibleDescriptionRole).toString();
    default:
        return {};
    }
}

void Item::doAction(const QString& name) {
    if (!canAct()) {
        return;
    }
    if (name == toggleAction()) {
        static_cast<SweepReviewModel*>(m_list->model())->toggle(m_index);
    } else if (name == setFocusAction()) {
        m_list->setFocus(Qt::OtherFocusReason);
        m_list->setCurrentIndex(m_index);
    }
}

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const list = qobject_cast<SweepReviewList*>(object);
    return list != nullptr ? new SweepReviewAccessible(list) : nullptr;
}

} // namespace

SweepReviewAccessible::SweepReviewAccessible(SweepReviewList* list)
    : QAccessibleWidget(list, QAccessible::List) {}

SweepReviewAccessible::~SweepReviewAccessible() {
    for (const auto id : m_met) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

void SweepReviewAccessible::install() {
    QAccessible::installFactory(make); // which leaves out what is installed
}

SweepReviewList& SweepReviewAccessible::list() const {
    return *static_cast<SweepReviewList*>(widget());
}

SweepReviewAccessible& SweepReviewAccessible::of(SweepReviewList& list) {
    return *static_cast<SweepReviewAccessible*>(QAccessible::queryAccessibleInterface(&list));
}

void SweepReviewAccessible::tellFocus(SweepReviewList& list) {
    auto* const row = QAccessible::isActive() ? of(list).at(list.currentIndex()) : nullptr;
    if (row != nullptr) {
        QAccessibleEvent focus(row, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void SweepReviewAccessible::tellTick(SweepReviewList& list, const QModelIndex& row) {
    if (!QAccessible::isActive()) {
        return;
    }
    QAccessible::State changed;
    changed.checked = true; // says which part of the state, not what it is now
    QAccessibleStateChangeEvent tick(of(list).at(row), changed);
    QAccessible::updateAccessibility(&tick);
    QAccessibleEvent sum(of(list).at(row.parent()), QAccessible::NameChanged);
    QAccessible::updateAccessibility(&sum);
}

int SweepReviewAccessible::childCount() const {
    return list().model()->rowCount();
}

QAccessibleInterface* SweepReviewAccessible::child(int index) const {
    return at(list().model()->index(index, 0));
}

int SweepReviewAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const item = dynamic_cast<const Item*>(child);
    return item != nullptr && !item->index().parent().isValid() ? item->index().row() : -1;
}

QAccessibleInterface* SweepReviewAccessible::childAt(int x, int y) const {
    return at(list().indexAt(list().viewport()->mapFromGlobal(QPoint(x, y))));
}

QAccessibleInterface* SweepReviewAccessible::focusChild() const {
    return list().hasFocus() ? at(list().currentIndex()) : nullptr;
}

QAccessibleInterface* SweepReviewAccessible::at(const QModelIndex& index) const {
    if (!index.isValid()) {
        return nullptr;
    }
    if (const auto met = m_met.constFind(index); met != m_met.constEnd()) {
        return QAccessible::accessibleInterface(*met);
    }
    auto* const item = new Item(list(), index);
    m_met.insert(index, QAccessible::registerAccessibleInterface(item));
    return item;
}

} // namespace quillane
