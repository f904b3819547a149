#pragma once
#include "FileURL.h"
#include <QListView>
#include <QString>
#include <vector>

namespace quillane {

class DetailListModel;

// A list of files in a panel of a pane: symbol, name over a second line, and size. It is as high as its rows and
// scrolls with the pane; rows are drawn and have no widgets, so that thousands cost as little as three. The
// current row stays with its file when the list is filled anew.
class DetailList : public QListView {
    Q_OBJECT
  public:
    struct Row {
        FileURL url; // identity
        QString symbol;
        QString title;
        QString subtitle;
        QString size;
        bool isProtected = false; // bears the mark of what stays
        QString symbolHelp = {};  // what the symbol tells beyond the texts; empty for nothing
        friend bool operator==(const Row&, const Row&) = default;
    };
    // Between the edges of a row and what it shows: room for the focus ring, taken from the panel's padding.
    static constexpr int kOverhang = 6;
    enum Role { SymbolRole = Qt::UserRole, SubtitleRole, SizeRole, ProtectedRole, SymbolHelpRole };

    // `name` is what assistive tools call the list.
    explicit DetailList(const QString& name, QWidget* parent = nullptr);

    void setRows(std::vector<Row> rows);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // Scrolls the pane, when this lies in one.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    // Who comes by keyboard sees the current row.
    void focusInEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

  private:
    DetailListModel* m_model;
};

} // namespace quillane
