#include "DetailListDelegate.h"
#include "DetailList.h"
#include "FocusRing.h"
#include "ProtectedMark.h"
#include "Symbols.h"
#include "TabularText.h"
#include "TextStyle.h"
#include "Tokens.h"
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
    TextStyle style = TextStyle::row();
    style.weight = QFont::Medium;
    return style.font();
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

void drawSymbol(QPainter& painter, double left, double middle, int side, const QString& name,
                const QColor& color) {
    Symbols::draw(painter, {left, std::round(middle - side / 2.0)}, side, name, color);
}

} // namespace

int DetailListDelegate::rowHeight() {
    return kLine + kPadding + heightOf(titleFont()) + kBetweenLines + heightOf(subtitleFont()) + kPadding;
}

QRectF DetailListDelegate::markOf(const QRect& row, const QModelIndex& index) {
    const QRectF content = contentOf(row);
    const double left = content.right() - sizeWidth(index) - kGap - kMark;
    return {left, std::round(content.center().y() - kMark / 2.0), kMark, kMark};
}

QSize DetailListDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    constexpr int kLeastWidth = 100;
    return {kLeastWidth, rowHeight()};
}

void DetailListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const QRectF content = contentOf(option.rect);
    const double middle = content.center().y();
    painter->save();
    if (index.row() > 0) {
        painter->fillRect(QRectF(content.left(), option.rect.top(), content.width(), kLine), tokens.line2);
    }
    drawSymbol(*painter, content.left(), middle, kSymbol, index.data(DetailList::SymbolRole).toString(),
               tokens.text2);
    painter->setFont(sizeFont());
    painter->setPen(tokens.text2);
    TabularText::draw(*painter, content, index.data(DetailList::SizeRole).toString(), Qt::AlignRight);
    double end = content.right() - sizeWidth(index) - kGap;
    if (index.data(DetailList::ProtectedRole).toBool()) {
        const QRectF mark = markOf(option.rect, index);
        drawSymbol(*painter, mark.left(), middle, kMark, ProtectedMark::symbolName(),
                   tokens.tint(Tint::Green));
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
    if (event->type() == QEvent::ToolTip && index.data(DetailList::ProtectedRole).toBool() &&
        markOf(option.rect, index).contains(event->pos())) {
        QToolTip::showText(event->globalPos(), ProtectedMark::helpText(), view);
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

} // namespace quillane
