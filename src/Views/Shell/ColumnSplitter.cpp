#include "Shell/ColumnSplitter.h"
#include "Components/Tokens.h"
#include <QAccessibleWidget>
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

// The base takes it for a grip of something.
QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const handle = dynamic_cast<LineHandle*>(object);
    return handle != nullptr ? new QAccessibleWidget(handle, QAccessible::Separator) : nullptr;
}

} // namespace

ColumnSplitter::ColumnSplitter(QWidget* parent)
    : QSplitter(Qt::Horizontal, parent) {
    QAccessible::installFactory(makeAccessible); // which leaves out what is installed
    setChildrenCollapsible(false);
    setHandleWidth(1);
}

QSplitterHandle* ColumnSplitter::createHandle() {
    return new LineHandle(orientation(), this);
}

} // namespace quillane
