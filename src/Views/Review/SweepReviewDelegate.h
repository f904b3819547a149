#pragma once
#include <QStyledItemDelegate>

namespace quillane {

// Draws the rows of a SweepReviewList: headers of categories, and below each a card that its rows share, one
// slice a row. A click or the space bar ticks.
class SweepReviewDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit SweepReviewDelegate(QObject* parent);

    // State_HasFocus in `option` draws the ring round the check box.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  protected:
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

  private:
    // Where the parts of a row lie, and its texts as they fit.
    struct Layout {
        QRectF slice, box, title, subtitle, size;
        QString shownTitle, shownSubtitle;
        bool elided = false;
    };
    Layout layout(const QRect& row, const QModelIndex& index) const;
    void paintSection(QPainter& painter, const QRect& row, const QModelIndex& index) const;
    void paintEntry(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    void measure();

    // Kept, as 20,000 rows ask for them.
    int m_sectionHeight = 0;
    int m_entryHeight = 0;
    double m_titleHeight = 0;
    double m_subtitleHeight = 0;
};

} // namespace quillane
