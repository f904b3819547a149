#pragma once
#include "Components/Tint.h"
#include <QListWidget>

namespace quillane {

// The list of sections: symbol, name, and a badge where there is something to count. Paints no ground, so
// the column's colour shows.
class SidebarView : public QListWidget {
    Q_OBJECT
  public:
    explicit SidebarView(const QString& name, QWidget* parent = nullptr);

    static constexpr int kWidth = 212; // where there is room; below it all air shrinks
    static constexpr int kItemHeight = 32;
    static constexpr int kItemGap = 2;

    void addSection(const QString& title, const QString& symbol);
    // An empty text draws no badge. `spoken` is what assistive tools read for the row: "Startup, 3 problems".
    // Tint::Orange marks problems; anything else is neutral.
    void setBadge(int row, const QString& text, const QString& spoken, Tint tint = Tint::Secondary);
    QString badge(int row) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    // One section is always selected: neither a click beside the items nor one with Ctrl takes it away.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

} // namespace quillane
