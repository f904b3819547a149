#include "Components/ReadingListAccessible.h"
#include "Components/ReadingList.h"
#include <QPointer>

namespace quillane {

namespace {

// Goes with its row, or with the accessible of its list.
class Row : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    Row(ReadingList& list, const QModelIndex& index)
        : m_list(&list)
        , m_index(index) {}

    bool isValid() const override { return m_list != nullptr && m_index.isValid(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_list); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    int number() const { return m_index.row(); }
    QRect rect() const override {
        const QRect place = m_list->visualRect(m_index);
        return place.isValid() ? QRect(m_list->viewport()->mapToGlobal(place.topLeft()), place.size())
                               : QRect();
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !m_list->isVisible();
        state.disabled = !m_list->isEnabled();
        state.offscreen = !m_list->viewport()->visibleRegion().intersects(m_list->visualRect(m_index));
        state.focusable = true;
        state.focused = m_list->hasFocus() && m_list->currentIndex() == m_index;
        return state;
    }
    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Name          ? m_index.data(Qt::AccessibleTextRole).toString()
               : which == QAccessible::Description ? m_index.data(Qt::AccessibleDescriptionRole).toString()
                                                   : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    QStringList actionNames() const override {
        return canAct() ? QStringList{setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (canAct() && name == setFocusAction()) {
            m_list->setFocus(Qt::OtherFocusReason);
            m_list->setCurrentIndex(m_index);
        }
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    bool canAct() const { return isValid() && m_list->isEnabled() && m_list->isVisible(); }

    QPointer<ReadingList> m_list;
    const QPersistentModelIndex m_index;
};

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* const list = qobject_cast<ReadingList*>(object);
    return list != nullptr ? new ReadingListAccessible(list) : nullptr;
}

} // namespace

ReadingListAccessible::ReadingListAccessible(ReadingList* list)
    : QAccessibleWidget(list, QAccessible::List) {}

ReadingListAccessible::~ReadingListAccessible() {
    for (const auto id : m_met) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

void ReadingListAccessible::install() {
    QAccessible::installFactory(make); // which leaves out what is installed
}

// A list that derives from it may be met otherwise.
void ReadingListAccessible::forget(ReadingList& list, int first, int last) {
    auto* const self = dynamic_cast<ReadingListAccessible*>(QAccessible::queryAccessibleInterface(&list));
    if (self == nullptr) {
        return;
    }
    self->m_met.removeIf([&](const auto& met) {
        const int row = met.key().row(); // -1 when all have gone
        const bool goes = row < 0 || (row >= first && row <= last);
        if (goes) {
            QAccessible::deleteAccessibleInterface(met.value());
        }
        return goes;
    });
}

ReadingList& ReadingListAccessible::list() const {
    return *static_cast<ReadingList*>(widget());
}

int ReadingListAccessible::childCount() const {
    return list().model() != nullptr ? list().model()->rowCount() : 0;
}

QAccessibleInterface* ReadingListAccessible::child(int index) const {
    return list().model() != nullptr ? at(list().model()->index(index, 0)) : nullptr;
}

int ReadingListAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* const row = dynamic_cast<const Row*>(child);
    return row != nullptr && row->parent() == this ? row->number() : -1;
}

QAccessibleInterface* ReadingListAccessible::childAt(int x, int y) const {
    return at(list().indexAt(list().viewport()->mapFromGlobal(QPoint(x, y))));
}

QAccessibleInterface* ReadingListAccessible::focusChild() const {
    return list().hasFocus() ? at(list().currentIndex()) : nullptr;
}

QAccessibleInterface* ReadingListAccessible::at(const QModelIndex& row) const {
    if (!row.isValid()) {
        return nullptr;
    }
    if (const auto met = m_met.constFind(row); met != m_met.constEnd()) {
        return QAccessible::accessibleInterface(*met);
    }
    auto* const made = new Row(list(), row);
    m_met.insert(row, QAccessible::registerAccessibleInterface(made));
    return made;
}

} // namespace quillane
