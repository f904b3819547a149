#pragma once
#include "Tables/TableColumn.h"
#include "Tables/TypeAhead.h"
#include <QBasicTimer>
#include <QPointer>
#include <QTreeView>
#include <vector>

namespace quillane {

class HeaderView;
class TableDelegate;

// The table of a section: flat rows of 30 pixels, whole rows selected, rounded bars that reach past the last
// column and answer there too. What a cell shows is the model's to say, see TableRole. Sorting, type-ahead,
// keys and accessibility are those of QTreeView. Tab leaves the table; Shift+Tab goes to the header first,
// where the order is chosen by keyboard.
class TableView : public QTreeView {
    Q_OBJECT
  public:
    // `name` is what assistive tools call the table.
    explicit TableView(const QString& name, QWidget* parent = nullptr);
    ~TableView() override;

    static constexpr int kRowHeight = 30;
    static constexpr int kInset = 8; // of the bars, from both edges
    static constexpr int kStretchLeast = 180;

    // By logical column, one for each column of the model. A width that the user drags replaces the wish.
    void setColumns(std::vector<TableColumn> columns);
    // Covers the rows while there are none. Takes over `overlay`, which may be null.
    void setEmptyState(QWidget* overlay);
    // The column that typed letters search; the first unless said otherwise.
    void setTypeAheadColumn(int column) { m_typeAheadColumn = column; }
    // Whether selected rows are drawn as in a table that has the focus.
    bool showsActiveSelection() const;
    int spinnerStep() const { return m_spinnerStep; }
    bool isSpinning() const { return m_spinnerTimer.isActive(); }

    void setModel(QAbstractItemModel* model) override;
    void keyboardSearch(const QString& search) override;
    // A place behind the last column is one in that column.
    QModelIndex indexAt(const QPoint& point) const override;

  signals:
    // Space was pressed, once however long it is held, while rows are selected and the cursor was not led elsewhere.
    void spacePressed();
    // The context menu is wanted, at a place of the screen: for the selected rows, a row under the pointer
    // being selected by then, or for the empty table. The menu key and Shift+F10 ask for it too, beside the
    // current row.
    void menuWanted(bool forRows, const QPoint& globalPosition);

  protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;

  private:
    double growth(int column) const;
    void layOutColumns();
    void updateEmptyState();
    void sectionDragged(int column, int newWidth);
    QRectF barOf(const QRect& row) const;
    void drawBar(QPainter& painter, const QRect& row, const QModelIndex& index, bool selected) const;
    void drawCursor(QPainter& painter, const QRect& row, bool selected) const;
    void pressSpace(QKeyEvent* event);
    void moveCursorBy(QKeyEvent* event);
    void selectRow(int row);
    void setRoaming(bool roams);
    void wantMenuAtPointer(const QPoint& position);
    void wantMenuByKey();

    HeaderView* m_header;
    TableDelegate* m_delegate;
    std::vector<TableColumn> m_columns;
    QPointer<QWidget> m_emptyState;
    std::vector<QMetaObject::Connection> m_modelConnections;
    QBasicTimer m_spinnerTimer;
    TypeAhead m_typeAhead;
    int m_typeAheadColumn = 0;
    int m_spinnerStep = 0;
    mutable QRegion m_busyRegion; // cells with a spinner that the last paint showed
    bool m_layingOut = false;
    bool m_cursorRoams = false; // Ctrl and an arrow have moved it without selecting
};

} // namespace quillane
