#include "Panes/DetailList.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/ToolTipText.h"
#include "Panes/DetailListDelegate.h"
#include "Tables/RowModel.h"
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
    : PaneList(parent)
    , m_model(new DetailListModel(this)) {
    setAccessibleName(name);
    setModel(m_model);
    setItemDelegate(new DetailListDelegate(this));
}

void DetailList::setRows(std::vector<Row> rows) {
    fill([&] { m_model->update(std::move(rows)); });
}

int DetailList::rowHeight() const {
    return DetailListDelegate::rowHeight();
}

} // namespace quillane
