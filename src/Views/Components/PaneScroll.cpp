#include "Components/PaneScroll.h"
#include "Components/FocusRing.h"
#include <QPainter>
#include <QScrollBar>

namespace quillane {

namespace {

// The content covers what the scroll area itself would draw.
class InnerRing : public QWidget {
  public:
    explicit InnerRing(QWidget* area)
        : QWidget(area) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        if (FocusRing::isShownFor(parentWidget())) {
            constexpr double kRadius = 4;
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            FocusRing::drawInside(painter, rect(), kRadius);
        }
    }
};

} // namespace

PaneScroll::PaneScroll(const QString& name, QWidget* content, QWidget* parent)
    : QScrollArea(parent)
    , m_ring(new InnerRing(this)) {
    setAccessibleName(name);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &PaneScroll::chooseFocusPolicy);
    chooseFocusPolicy();
}

// What has the focus keeps it until it is taken.
void PaneScroll::chooseFocusPolicy() {
    const bool canScroll = verticalScrollBar()->maximum() > verticalScrollBar()->minimum();
    setFocusPolicy(canScroll ? Qt::StrongFocus : Qt::NoFocus);
}

void PaneScroll::focusInEvent(QFocusEvent* event) {
    QScrollArea::focusInEvent(event);
    m_ring->update();
}

void PaneScroll::focusOutEvent(QFocusEvent* event) {
    QScrollArea::focusOutEvent(event);
    m_ring->update();
}

void PaneScroll::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    m_ring->setGeometry(rect());
    m_ring->raise();
}

} // namespace quillane
