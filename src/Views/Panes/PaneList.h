#pragma once
#include "Components/ReadingList.h"
#include <QString>

namespace quillane {

// A list in a panel of a pane. It is as high as its rows and scrolls with the pane; rows are drawn and have no
// widgets, so that thousands cost as little as three.
class PaneList : public ReadingList {
    Q_OBJECT
  public:
    // Between the edges of a row and what it shows: room for the focus ring, taken from the panel's padding.
    static constexpr int kOverhang = 6;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    // Scrolls the pane, when this lies in one.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    // Its name, its model and its delegate are set once, right after.
    explicit PaneList(QWidget* parent);

    // Of every row, in pixels.
    virtual int rowHeight() const = 0;
    // Runs `update`, which brings the model up to date: the list gets the height of its rows, and a row that goes
    // or comes meanwhile moves nothing.
    template <class Update>
    void fill(Update update) {
        const int before = model()->rowCount();
        setAutoScroll(false);
        update();
        setAutoScroll(true);
        if (model()->rowCount() != before) {
            updateGeometry();
        }
    }

    // Who comes by keyboard sees the current row.
    void focusInEvent(QFocusEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

} // namespace quillane
