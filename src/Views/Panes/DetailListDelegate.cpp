#include "Panes/DetailListDelegate.h"
#include "Components/FocusRing.h"
#include "Components/Hairline.h"
#include "Components/ProtectedMark.h"
#include "Components/Symbols.h"
#include "Components/TabularText.h"
#include "Components/TextStyle.h"
#include "Components/Tokens.h"
#include "Panes/DetailList.h"
#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

constexpr int kLine = 1;
constexpr int kPadding = 6; // above the title and below the second line
constexpr int kBetweenLines = 1;
constexpr int kSymbol = 16;
constexpr int kMark = 15;
constexpr int kGap = 9;

QFont titleFont() {
    return TextStyle::row().font();
}

QFont subtitleFont() {
    return TextStyle::caption().font();
}

QFont sizeFont() {
    return TextStyle::secondary().font();
}

int heightOf(const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

// What lies below the line.
QRectF contentOf(const QRect& row) {
    return QRectF(row).adjusted(DetailList::kOverhang, kLine, -DetailList::kOverhang, 0);
}

QRectF squareIn(const QRectF& content, double left, int side) {
    return {left, std::round(content.center().y() - side / 2.0), static_cast<double>(side),
            static_cast<double>(side)};
}

double sizeWidth(const QModelIndex& index) {
    return TabularText::width(QFontMetricsF(sizeFont()), index.data(DetailList::SizeRole).toString());
}

void drawLines(QPainter& painter, const QRectF& room, const QModelIndex& index) {
    const Tokens& tokens = Tokens::current();
    const auto draw = [&](const QRectF& line, const QFont& font, const QColor& color, const QString& text) {
        painter.setFont(font);
        painter.setPen(color);
        painter.drawText(line, Qt::AlignVCenter | Qt::TextSingleLine,
                         QFontMetricsF(font).elidedText(text, Qt::ElideMiddle, std::max(0.0, line.width())));
    };
    const QRectF title(room.left(), room.top() + kPadding, room.width(), heightOf(titleFont()));
    draw(title, titleFont(), tokens.text, index.data().toString());
    const QRectF below(room.left(), title.bottom() + kBetweenLines, room.width(), heightOf(subtitleFont()));
    draw(below, subtitleFont(), tokens.text2, index.data(DetailList::SubtitleRole).toString());
}

// What the symbol or the mark under the pointer means; empty for the rest of the row.
QString helpAt(const QPoint& at, const QRect& row, const QModelIndex& index) {
    if (DetailListDelegate::symbolOf(row).contains(at)) {
        return index.data(DetailList::SymbolHelpRole).toString();
    }
    const bool isOnMark =
        index.data(DetailList::ProtectedRole).toBool() && DetailListDelegate::markOf(row, index).contains(at);
    return isOnMark ? ProtectedMark::helpText() : QString();
}

} // namespace

int DetailListDelegate::rowHeight() {
    return kLine + kPadding + heightOf(titleFont()) + kBetweenLines + heightOf(subtitleFont()) + kPadding;
}

QRectF DetailListDelegate::markOf(const QRect& row, const QModelIndex& index) {
    const QRectF content = contentOf(row);
    return squareIn(content, content.right() - sizeWidth(index) - kGap - kMark, kMark);
}

QRectF DetailListDelegate::symbolOf(const QRect& row) {
    const QRectF content = contentOf(row);
    return squareIn(content, content.left(), kSymbol);
}

QSize DetailListDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    constexpr int kLeastWidth = 100;
    return {kLeastWidth, rowHeight()};
}

void DetailListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const QRectF content = contentOf(option.rect);
    painter->save();
    if (index.row() > 0) {
        Hairline::fill(*painter, QRectF(content.left(), option.rect.top(), content.width(), kLine),
                       tokens.line2);
    }
    Symbols::draw(*painter, symbolOf(option.rect).topLeft(), kSymbol,
                  index.data(DetailList::SymbolRole).toString(), tokens.text2);
    painter->setFont(sizeFont());
    painter->setPen(tokens.text2);
    TabularText::draw(*painter, content, index.data(DetailList::SizeRole).toString(), Qt::AlignRight);
    double end = content.right() - sizeWidth(index) - kGap;
    if (index.data(DetailList::ProtectedRole).toBool()) {
        const QRectF mark = markOf(option.rect, index);
        Symbols::draw(*painter, mark.topLeft(), kMark, ProtectedMark::symbolName(), tokens.tint(Tint::Green));
        end = mark.left() - kGap;
    }
    drawLines(*painter,
              {content.left() + kSymbol + kGap, content.top(), end - content.left() - kSymbol - kGap,
               content.height()},
              index);
    if ((option.state & QStyle::State_HasFocus) && FocusRing::isShownFor(option.widget)) {
        FocusRing::drawInside(*painter, option.rect, 6);
    }
    painter->restore();
}

bool DetailListDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    const QString help =
        event->type() == QEvent::ToolTip ? helpAt(event->pos(), option.rect, index) : QString();
    if (help.isEmpty()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::showText(event->globalPos(), help, view);
    return true;
}

} // namespace quillane
