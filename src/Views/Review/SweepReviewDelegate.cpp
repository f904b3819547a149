#include "Review/SweepReviewDelegate.h"
#include "Components/CategoryTint.h"
#include "Components/Fonts.h"
#include "Components/Hairline.h"
#include "Components/PermanentBadge.h"
#include "Components/Style/CheckBoxDrawing.h"
#include "Components/Symbols.h"
#include "Components/TabularText.h"
#include "Components/TextStyle.h"
#include "Components/Tokens.h"
#include "Components/ToolTipText.h"
#include "Review/SweepReviewModel.h"
#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

constexpr int kInset = 20; // of headers and cards, from both edges of the list
constexpr double kCardRadius = 12;
constexpr int kSectionHeight = 38;
constexpr int kSectionDrop = 3; // its words stand nearer to its rows
constexpr int kEntryHeight = 44;
constexpr int kBelowCard = 2;  // below the last row of a category
constexpr int kBelowList = 16; // below the last row of all
constexpr int kSectionSymbol = 16;
constexpr int kSectionTextLeft = 28;
constexpr int kSectionPadding = 4;
constexpr int kEntryPadding = 14;
constexpr int kBox = 16;
constexpr int kEntryTextLeft = 42;
constexpr int kGap = 12; // between the words and the size
constexpr double kBoxRadius = 4.5;
constexpr int kRing = 3;

QFont titleFont() {
    return TextStyle::body().font();
}

QFont subtitleFont() {
    return TextStyle::caption().font();
}

bool isLast(const QModelIndex& index) {
    const auto* const model = index.model();
    return model != nullptr && index.row() == model->rowCount(index.parent()) - 1;
}

int blankBelow(const QModelIndex& index) {
    if (!isLast(index)) {
        return 0;
    }
    return isLast(index.parent()) ? kBelowList : kBelowCard;
}

// A slice of the card that all rows of a category share: the whole card would be as high as all its rows, so
// each row draws a rounded rectangle that overhangs it and clips it away.
void drawSlice(QPainter& painter, const QRectF& slice, bool first, bool last) {
    const Tokens& tokens = Tokens::current();
    const QRectF card =
        slice.adjusted(0.5, first ? 0.5 : -2 * kCardRadius, -0.5, last ? -0.5 : 2 * kCardRadius);
    painter.save();
    painter.setClipRect(slice.adjusted(0, 0, 0, last ? 1 : 0));
    if (last) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(tokens.shadow);
        painter.drawRoundedRect(card.translated(0, 1), kCardRadius, kCardRadius);
    }
    painter.setPen(tokens.line);
    painter.setBrush(tokens.card);
    painter.drawRoundedRect(card, kCardRadius, kCardRadius);
    painter.restore();
    if (!first) {
        Hairline::fill(painter, QRectF(slice.left() + 1, slice.top(), slice.width() - 2, 1), tokens.line2);
    }
}

} // namespace

SweepReviewDelegate::SweepReviewDelegate(QObject* parent)
    : QStyledItemDelegate(parent) {
    Fonts::follow(this, [this] { measure(); });
}

void SweepReviewDelegate::measure() {
    m_sectionHeight = Fonts::rowHeight(kSectionHeight);
    m_titleHeight = std::ceil(QFontMetricsF(titleFont()).height());
    m_subtitleHeight = std::ceil(QFontMetricsF(subtitleFont()).height());
    const int words = static_cast<int>(m_titleHeight + m_subtitleHeight);
    m_entryHeight = std::max(kEntryHeight, words + 10);
}

QSize SweepReviewDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    constexpr int kLeastWidth = 100;
    if (!SweepReviewModel::isEntry(index)) {
        return {kLeastWidth, m_sectionHeight};
    }
    return {kLeastWidth, m_entryHeight + blankBelow(index)};
}

SweepReviewDelegate::Layout SweepReviewDelegate::layout(const QRect& row, const QModelIndex& index) const {
    Layout at;
    at.slice = QRectF(row.left() + kInset, row.top(), row.width() - 2 * kInset, m_entryHeight);
    const double middle = at.slice.center().y();
    at.box = QRectF(at.slice.left() + kEntryPadding, std::round(middle - kBox / 2.0), kBox, kBox);
    const QFontMetricsF titles(titleFont());
    const double sizeWidth = TabularText::width(titles, index.data(SweepReviewModel::kSizeRole).toString());
    at.size = at.slice.adjusted(at.slice.width() - kEntryPadding - sizeWidth, 0, -kEntryPadding, 0);
    const double left = at.slice.left() + kEntryTextLeft;
    const double room = std::max(0.0, at.size.left() - kGap - left);
    const double top = std::round(middle - (m_titleHeight + m_subtitleHeight) / 2);
    at.title = QRectF(left, top, room, m_titleHeight);
    at.subtitle = QRectF(left, top + m_titleHeight, room, m_subtitleHeight);
    const QString title = index.data().toString();
    const QString subtitle = index.data(SweepReviewModel::kSubtitleRole).toString();
    at.shownTitle = titles.elidedText(title, Qt::ElideRight, room);
    at.shownSubtitle = QFontMetricsF(subtitleFont()).elidedText(subtitle, Qt::ElideMiddle, room);
    at.elided = at.shownTitle != title || at.shownSubtitle != subtitle;
    return at;
}

void SweepReviewDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (SweepReviewModel::isEntry(index)) {
        paintEntry(*painter, option, index);
    } else {
        paintSection(*painter, option.rect, index);
    }
    painter->restore();
}

void SweepReviewDelegate::paintSection(QPainter& painter, const QRect& row, const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const auto category = static_cast<SweepCategory>(index.data(SweepReviewModel::kCategoryRole).toInt());
    const QRectF place = QRectF(row).adjusted(kInset, 2 * kSectionDrop, -kInset, 0);
    const double middle = place.center().y();
    Symbols::draw(painter, {place.left() + kSectionPadding, std::round(middle - kSectionSymbol / 2.0)},
                  kSectionSymbol, index.data(SweepReviewModel::kSymbolRole).toString(),
                  tokens.tint(tintOf(category)));
    painter.setFont(TextStyle::heading().font());
    painter.setPen(tokens.text);
    const QString title = index.data().toString();
    const QRectF words = place.adjusted(kSectionTextLeft, 0, 0, 0);
    painter.drawText(words, Qt::AlignVCenter | Qt::TextSingleLine, title);
    TabularText::draw(painter, place.adjusted(0, 0, -kSectionPadding, 0),
                      index.data(SweepReviewModel::kSizeRole).toString(), Qt::AlignRight);
    if (category == SweepCategory::trash) {
        constexpr int kBeforeBadge = 8;
        const double width = QFontMetricsF(painter.font()).horizontalAdvance(title);
        PermanentBadge::draw(painter, words.left() + width + kBeforeBadge, middle);
    }
}

void SweepReviewDelegate::paintEntry(QPainter& painter, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const Layout at = layout(option.rect, index);
    drawSlice(painter, at.slice, index.row() == 0, isLast(index));
    const bool ticked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    CheckBoxDrawing::draw(painter, at.box,
                          QStyle::State_Enabled | (ticked ? QStyle::State_On : QStyle::State_Off));
    if (option.state & QStyle::State_HasFocus) {
        constexpr double kHalf = kRing / 2.0;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(tokens.ring, kRing));
        painter.drawRoundedRect(at.box.adjusted(-kHalf, -kHalf, kHalf, kHalf), kBoxRadius + kHalf,
                                kBoxRadius + kHalf);
    }
    painter.setFont(titleFont());
    painter.setPen(tokens.text);
    painter.drawText(at.title, Qt::AlignVCenter | Qt::TextSingleLine, at.shownTitle);
    painter.setPen(tokens.text2);
    TabularText::draw(painter, at.size, index.data(SweepReviewModel::kSizeRole).toString(), Qt::AlignRight);
    painter.setFont(subtitleFont());
    painter.drawText(at.subtitle, Qt::AlignVCenter | Qt::TextSingleLine, at.shownSubtitle);
}

bool SweepReviewDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                      const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (!SweepReviewModel::isEntry(index)) {
        return false;
    }
    bool ticks = false;
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        ticks = mouse->button() == Qt::LeftButton && option.rect.contains(mouse->position().toPoint());
    } else if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        ticks = key->key() == Qt::Key_Space && !key->isAutoRepeat(); // a held key ticks once
    }
    if (ticks) {
        static_cast<SweepReviewModel*>(model)->toggle(index);
    }
    return ticks;
}

bool SweepReviewDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !SweepReviewModel::isEntry(index)) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QString help;
    if (layout(option.rect, index).elided) {
        help = index.data().toString() + QLatin1Char('\n') +
               index.data(SweepReviewModel::kSubtitleRole).toString();
    }
    QToolTip::showText(event->globalPos(), toolTipText(help), view);
    return true;
}

} // namespace quillane
