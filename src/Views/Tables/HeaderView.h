#pragma once
#include <QHeaderView>
#include <vector>

namespace quillane {

// The header of a TableView: 28 pixels and a line, then 4 blank ones. While it has the focus, which the table
// gives it, Left, Right, Home and End choose a column, and Space and Return do what a click on it does; Tab and
// Down go back to the rows.
class HeaderView : public QHeaderView {
    Q_OBJECT
  public:
    explicit HeaderView(QWidget* parent = nullptr);

    static constexpr int kHeight = 28;
    static constexpr int kBlank = 4;

    // What heading and cells of a column leave free behind them. What stands in the last column that is shown does
    // not reach the end of the row's bar.
    static int insetBehind(const QHeaderView& header, int logicalIndex);

    QSize sizeHint() const override;
    // The logical column that the keys act on; -1 without the focus.
    int focusedColumn() const { return hasFocus() ? m_focusedColumn : -1; }
    // Whether a click on this column sorts.
    bool isSortable(int logicalIndex) const;
    // What a click on that column does; nothing without the focus.
    void sortByFocusedColumn();

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    void paintGround(const QRect& rect);
    std::vector<int> shownColumns() const;
    void focusColumn(int logicalIndex);
    void stepBy(int columns);
    Qt::SortOrder orderAfterClick(int logicalIndex) const;

    int m_focusedColumn = -1;
};

} // namespace quillane
