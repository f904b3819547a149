#include "Tables/TableDelegate.h"
#include "Components/Badge.h"
#include "Components/Fonts.h"
#include "Components/ProtectedMark.h"
#include "Components/Spinner.h"
#include "Components/Symbols.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include "Components/ToolTipText.h"
#include "Tables/HeaderView.h"
#include "Tables/TableRole.h"
#include "Tables/TableView.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

namespace quillane {

namespace {

constexpr double kFirstInset = 16;
constexpr double kInset = 8;
constexpr double kPicture = 20;
constexpr double kSymbol = 15;
constexpr double kTrailing = 13;
constexpr double kGap = 7;

QRectF centred(const QRectF& rect, double left, double side) {
    return {left, std::round(rect.center().y() - side / 2), side, side};
}

Tint tintOf(const QModelIndex& index, int role, Tint otherwise) {
    const QVariant value = index.data(role);
    return value.isValid() ? static_cast<Tint>(value.toInt()) : otherwise;
}

double symbolSideOf(const QModelIndex& index) {
    const QVariant value = index.data(kSymbolSideRole);
    return value.isValid() ? value.toDouble() : kSymbol;
}

Qt::TextElideMode elideOf(const QModelIndex& index) {
    const QVariant value = index.data(kElideRole);
    return value.isValid() ? static_cast<Qt::TextElideMode>(value.toInt()) : Qt::ElideRight;
}

void drawPicture(QPainter& painter, const QRectF& rect, const QVariant& picture) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (picture.metaType().id() == QMetaType::QIcon) {
        picture.value<QIcon>().paint(&painter, rect.toRect());
    } else if (picture.metaType().id() == QMetaType::QImage) {
        painter.drawImage(rect, picture.value<QImage>());
    } else {
        const auto pixmap = picture.value<QPixmap>();
        painter.drawPixmap(rect, pixmap, pixmap.rect());
    }
}

} // namespace

TableDelegate::TableDelegate(TableView* view)
    : QStyledItemDelegate(view)
    , m_view(view) {}

QSize TableDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {60, Fonts::rowHeight(TableView::kRowHeight)};
}

TableDelegate::Layout TableDelegate::layout(const QRect& cell, const QModelIndex& index) const {
    const bool first = m_view->header()->visualIndex(index.column()) == 0;
    const int behind = HeaderView::insetBehind(*m_view->header(), index.column());
    QRectF rest = QRectF(cell).adjusted(first ? kFirstInset : kInset, 0, -behind, 0);
    Layout result;
    if (index.data(Qt::DecorationRole).isValid()) {
        result.picture = centred(rest, rest.left(), kPicture);
        rest.setLeft(rest.left() + kPicture + kGap);
    }
    const QString text = index.data().toString();
    if (!index.data(kSymbolRole).toString().isEmpty()) {
        const double side = symbolSideOf(index);
        result.symbol = centred(rest, rest.left(), side);
        rest.setLeft(rest.left() + side + kGap);
    }
    const bool trailing = !index.data(kTrailingSymbolRole).toString().isEmpty();
    const bool further = !index.data(kFurtherSymbolRole).toString().isEmpty();
    const bool isProtected = index.data(kProtectedRole).toBool();
    const double marks = (kTrailing + kGap) * (int(trailing) + int(further) + int(isProtected));
    const double room = std::max(0.0, rest.width() - marks);
    const QFontMetricsF metrics(Fonts::of(13));
    const bool tabular = index.data(kTabularRole).toBool();
    const double width = tabular ? TabularText::width(metrics, text) : metrics.horizontalAdvance(text);
    result.elided = width > room + 0.5;
    result.shown = !result.elided ? text
                   : tabular      ? TabularText::elided(metrics, text, room)
                                  : metrics.elidedText(text, elideOf(index), room);
    result.text = QRectF(rest.left(), rest.top(), room, rest.height());
    double end = result.text.left() + (tabular ? room : metrics.horizontalAdvance(result.shown));
    if (trailing) {
        result.trailing = centred(rest, end + kGap, kTrailing);
        end = result.trailing.right();
    }
    if (further) {
        result.further = centred(rest, end + kGap, kTrailing);
        end = result.further.right();
    }
    if (isProtected) {
        result.protectedMark = centred(rest, end + kGap, kTrailing);
    }
    return result;
}

void TableDelegate::paintText(QPainter& painter, const Layout& layout, const QModelIndex& index,
                              const QColor& color, bool onSelection) const {
    if (index.data(kBadgeRole).toBool()) {
        const QString text = index.data().toString();
        const QSizeF size = Badge::sizeOf(text, {}, Badge::Kind::State);
        QRectF badge(layout.text.topLeft(), size);
        badge.setWidth(std::min(size.width(), layout.text.width()));
        badge.moveTop(layout.text.center().y() - size.height() / 2);
        Badge::draw(painter, badge, text, {}, tintOf(index, kTintRole, Tint::Secondary), Badge::Kind::State,
                    onSelection);
        return;
    }
    painter.setPen(color);
    if (index.data(kTabularRole).toBool()) {
        TabularText::draw(painter, layout.text, layout.shown, Qt::AlignRight);
    } else {
        painter.drawText(layout.text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, layout.shown);
    }
}

void TableDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const bool selected = option.state & QStyle::State_Selected;
    const bool onSelection = selected && (option.state & QStyle::State_Active);
    const Tint tint = tintOf(index, kTintRole, Tint::Text);
    const auto colour = [&](Tint own) { return onSelection ? QColor(Qt::white) : tokens.tint(own); };
    const Layout parts = layout(option.rect, index);
    painter->save();
    painter->setFont(Fonts::of(13));
    painter->setClipRect(option.rect, Qt::IntersectClip);
    if (!parts.picture.isEmpty()) {
        drawPicture(*painter, parts.picture, index.data(Qt::DecorationRole));
    }
    if (!parts.symbol.isEmpty()) {
        Symbols::draw(*painter, parts.symbol.topLeft(), parts.symbol.width(),
                      index.data(kSymbolRole).toString(), colour(tintOf(index, kSymbolTintRole, tint)));
    }
    if (index.data(kBusyRole).toBool()) {
        const bool right = index.data(kTabularRole).toBool();
        const double left = right ? parts.text.right() - kSymbol : parts.text.left();
        Spinner::draw(*painter, centred(parts.text, left, kSymbol), m_view->spinnerStep(),
                      colour(Tint::Link));
    } else {
        paintText(*painter, parts, index, colour(tint), onSelection);
    }
    const QColor markColour = colour(tintOf(index, kTrailingTintRole, Tint::Tertiary));
    if (!parts.trailing.isEmpty()) {
        Symbols::draw(*painter, parts.trailing.topLeft(), kTrailing,
                      index.data(kTrailingSymbolRole).toString(), markColour);
    }
    if (!parts.further.isEmpty()) {
        Symbols::draw(*painter, parts.further.topLeft(), kTrailing, index.data(kFurtherSymbolRole).toString(),
                      markColour);
    }
    if (!parts.protectedMark.isEmpty()) {
        Symbols::draw(*painter, parts.protectedMark.topLeft(), kTrailing, ProtectedMark::symbolName(),
                      colour(Tint::Green));
    }
    painter->restore();
}

bool TableDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const Layout parts = layout(option.rect, index);
    const auto isOver = [event](const QRectF& mark) {
        return !mark.isEmpty() && mark.adjusted(-3, -3, 3, 3).contains(event->pos());
    };
    QString help = isOver(parts.protectedMark) ? ProtectedMark::helpText()
                   : isOver(parts.trailing)    ? index.data(kTrailingHelpRole).toString()
                   : isOver(parts.further)     ? index.data(kFurtherHelpRole).toString()
                                               : QString();
    if (help.isEmpty()) {
        help = index.data(Qt::ToolTipRole).toString();
    }
    if (help.isEmpty() && parts.elided) {
        help = index.data().toString();
    }
    QToolTip::showText(event->globalPos(), toolTipText(help), view, option.rect);
    return true;
}

} // namespace quillane
