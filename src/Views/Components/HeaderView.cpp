#include "HeaderView.h"
#include "Fonts.h"
#include "Symbols.h"
#include "Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {
constexpr int kFirstInset = 16;
constexpr int kInset = 8;
constexpr int kTick = 16;
constexpr int kChevron = 10;
constexpr int kChevronGap = 5;
} // namespace

HeaderView::HeaderView(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(40);
    Fonts::follow(this, [this] { setFixedHeight(sizeHint().height()); });
    setAccessibleName(QStringLiteral("Column headers"));
}

QSize HeaderView::sizeHint() const {
    return {QHeaderView::sizeHint().width(), Fonts::rowHeight(kHeight, 11.5) + kBlank};
}

void HeaderView::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    const Tokens& tokens = Tokens::current();
    const bool sorted = isSortIndicatorShown() && sortIndicatorSection() == logicalIndex;
    const bool first = visualIndex(logicalIndex) == 0;
    const int side = model()->headerData(logicalIndex, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const bool right = (side & Qt::AlignRight) != 0;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(Fonts::of(11.5, sorted ? QFont::DemiBold : QFont::Medium));
    painter->setPen(sorted ? tokens.text : tokens.text2);
    const QRectF cell = QRectF(rect).adjusted(first ? kFirstInset : kInset, 0, -kInset, -kBlank);
    const double room = cell.width() - (sorted ? kChevron + kChevronGap : 0);
    const QFontMetricsF metrics(painter->font());
    const QString title = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    const QString text = metrics.elidedText(title, Qt::ElideRight, room + 1);
    painter->drawText(cell, static_cast<int>(Qt::AlignVCenter | (right ? Qt::AlignRight : Qt::AlignLeft)),
                      text);
    if (sorted) {
        const double width = metrics.horizontalAdvance(text);
        const double x =
            right ? cell.right() - width - kChevronGap - kChevron : cell.left() + width + kChevronGap;
        const bool down = sortIndicatorOrder() == Qt::DescendingOrder;
        Symbols::draw(*painter, {std::round(x), std::round(cell.center().y() - kChevron / 2.0)}, kChevron,
                      down ? QStringLiteral("chevron.down") : QStringLiteral("chevron.up"), tokens.text);
    }
    if (!first) {
        const int top = (rect.height() - kBlank - kTick) / 2;
        painter->fillRect(QRect(rect.left(), rect.top() + top, 1, kTick), tokens.line);
    }
    painter->restore();
}

void HeaderView::paintGround(const QRect& rect) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(viewport());
    painter.fillRect(rect, tokens.base);
    painter.fillRect(QRect(rect.left(), height() - kBlank - 1, rect.width(), 1), tokens.line);
}

void HeaderView::paintEvent(QPaintEvent* event) {
    paintGround(viewport()->rect());
    QHeaderView::paintEvent(event);
    const int end =
        length() - offset(); // the base gives what lies behind the last column a ground of its own
    paintGround(viewport()->rect().adjusted(end, 0, 0, 0));
}

} // namespace quillane
