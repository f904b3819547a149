#include "Shell/ColumnSplitter.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

namespace {

// With a width of one pixel the base takes the pointer two pixels to either side.
class LineHandle : public QSplitterHandle {
  public:
    using QSplitterHandle::QSplitterHandle;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(contentsRect(), Tokens::current().line);
    }
};

} // namespace

ColumnSplitter::ColumnSplitter(QWidget* parent)
    : QSplitter(Qt::Horizontal, parent) {
    setChildrenCollapsible(false);
    setHandleWidth(1);
}

QSplitterHandle* ColumnSplitter::createHandle() {
    return new LineHandle(orientation(), this);
}

} // namespace quillane
