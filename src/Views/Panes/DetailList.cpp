#include "Panes/DetailList.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/ToolTipText.h"
#include "Panes/DetailListDelegate.h"
#include "Tables/RowModel.h"
#include <QFocusEvent>
#include <QScrollArea>
#include <algorithm>
#include <utility>

namespace quillane {

class DetailListModel : public RowModel<DetailList::Row, FileURL> {
  public:
    explicit DetailListModel(QObject* parent)
        : RowModel(parent) {}

    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
            return {};
        }
        const auto& shown = row(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return shown.title;
        case Qt::ToolTipRole:
            return toolTipText(shownName(shown.url.path()));
        case Qt::AccessibleTextRole:
            return spoken(shown);
        case DetailList::SymbolRole:
            return shown.symbol;
        case DetailList::SubtitleRole:
            return shown.subtitle;
        case DetailList::SizeRole:
            return shown.size;
        case DetailList::ProtectedRole:
            return shown.isProtected;
        case DetailList::SymbolHelpRole:
            return shown.symbolHelp;
        default:
            return {};
        }
    }

  protected:
    const FileURL& key(const DetailList::Row& row) const override { return row.url; }

  private:
    static QString spoken(const DetailList::Row& row) {
        QStringList parts{row.title, row.subtitle, row.size};
        if (!row.symbolHelp.isEmpty()) {
            parts << row.symbolHelp;
        }
        if (row.isProtected) {
            parts << ProtectedMark::helpText();
        }
        return parts.join(QStringLiteral(", "));
    }
};

DetailList::DetailList(const QString& name, QWidget* parent)
    : QListView(parent)
    , m_model(new DetailListModel(this)) {
    setAccessibleName(name);
    setModel(m_model);
    setItemDelegate(new DetailListDelegate(this));
    setUniformItemSizes(true);
    setFrameShape(NoFrame);
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    viewport()->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void DetailList::setRows(std::vector<Row> rows) {
    const int before = m_model->rowCount();
    setAutoScroll(false); // a row that goes while a scan runs moves nothing
    m_model->update(std::move(rows));
    setAutoScroll(true);
    if (m_model->rowCount() != before) {
        updateGeometry();
    }
}

QSize DetailList::sizeHint() const {
    return {200, m_model->rowCount() * DetailListDelegate::rowHeight()};
}

QSize DetailList::minimumSizeHint() const {
    return {120, sizeHint().height()};
}

void DetailList::scrollTo(const QModelIndex& index, ScrollHint) {
    QWidget* ancestor = parentWidget();
    while (ancestor != nullptr && qobject_cast<QScrollArea*>(ancestor) == nullptr) {
        ancestor = ancestor->parentWidget();
    }
    if (ancestor == nullptr || !index.isValid()) {
        return;
    }
    auto* const pane = qobject_cast<QScrollArea*>(ancestor);
    const QRect row = visualRect(index);
    const QPoint middle = viewport()->mapTo(pane->widget(), row.center());
    pane->ensureVisible(middle.x(), middle.y(), 0, row.height());
}

void DetailList::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        scrollTo(currentIndex());
    }
}

QModelIndex DetailList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const int last = m_model->rowCount() - 1;
    if ((action != MovePageUp && action != MovePageDown) || last < 0) {
        return QListView::moveCursor(action, modifiers);
    }
    // A page is what the pane shows, and not the whole list.
    const int seen = viewport()->visibleRegion().boundingRect().height();
    const int page = std::max(1, seen / DetailListDelegate::rowHeight() - 1);
    const int wanted = currentIndex().row() + (action == MovePageDown ? page : -page);
    return m_model->index(std::clamp(wanted, 0, last), 0);
}

} // namespace quillane
