#include "Onboarding/PageDots.h"
#include "Components/ShownText.h"
#include "Components/Tokens.h"
#include "Formatting.h"
#include <QPainter>

namespace quillane {

namespace {

constexpr int kDot = 7; // and the gap between two
constexpr int kCurrent = 18;
constexpr double kQuiet = 0.45;

} // namespace

PageDots::PageDots(int pages, QWidget* parent)
    : Label({}, TextStyle::secondary(), parent)
    , m_pages(pages) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setPage(0);
}

void PageDots::setPage(int page) {
    m_page = page;
    setText(words("Page " + Formatting::number(page + 1) + " of " + Formatting::number(m_pages)));
    update();
}

QSize PageDots::sizeHint() const {
    return {2 * kDot * (m_pages - 1) + kCurrent, kDot};
}

void PageDots::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    int x = 0;
    for (int page = 0; page < m_pages; ++page) {
        const bool isCurrent = page == m_page;
        const QRectF dot(x, (height() - kDot) / 2.0, isCurrent ? kCurrent : kDot, kDot);
        painter.setBrush(isCurrent             ? tokens.accent
                         : tokens.highContrast ? tokens.text3
                                               : faded(tokens.text3, kQuiet));
        painter.drawRoundedRect(dot, kDot / 2.0, kDot / 2.0);
        x += static_cast<int>(dot.width()) + kDot;
    }
}

} // namespace quillane
