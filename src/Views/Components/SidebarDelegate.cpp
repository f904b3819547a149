#include "Components/SidebarDelegate.h"
#include "Components/Badge.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/SidebarView.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <cmath>

namespace quillane {

namespace {
constexpr double kInset = 10;
constexpr double kRadius = 7;
constexpr double kSymbol = 17;
constexpr double kHoverShare = 0.45;

// What the words and the badge leave free. A narrow sidebar gives them what it can.
struct Air {
    double left;
    double right;
    double betweenThem;
};

Air airIn(int width) {
    return width < SidebarView::kWidth ? Air{32, 4, 3} : Air{35, 8, 6};
}

} // namespace

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {100, Fonts::rowHeight(SidebarView::kItemHeight) + SidebarView::kItemGap};
}

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const QRectF item = QRectF(option.rect).adjusted(kInset, 0, -kInset, -SidebarView::kItemGap);
    const bool selected = option.state & QStyle::State_Selected;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (selected || (option.state & QStyle::State_MouseOver)) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(selected ? tokens.side : faded(tokens.side, kHoverShare));
        painter->drawRoundedRect(item, kRadius, kRadius);
    }
    if ((option.state & QStyle::State_HasFocus) && FocusRing::isShownFor(option.widget)) {
        FocusRing::drawInside(*painter, item, kRadius);
    }
    Symbols::draw(*painter, {item.left() + 9, std::round(item.center().y() - kSymbol / 2)}, kSymbol,
                  index.data(kSymbolRole).toString(), selected ? tokens.link : tokens.text2);
    const Air air = airIn(option.rect.width());
    double textRight = item.right() - air.right;
    const QString badge = index.data(kBadgeRole).toString();
    if (!badge.isEmpty()) {
        const QSizeF size = Badge::sizeOf(badge, {}, Badge::Kind::Capsule);
        const QRectF place(QPointF(textRight - size.width(), item.center().y() - size.height() / 2), size);
        Badge::draw(*painter, place, badge, {}, static_cast<Tint>(index.data(kBadgeTintRole).toInt()),
                    Badge::Kind::Capsule);
        textRight = place.left() - air.betweenThem;
    }
    painter->setFont(Fonts::of(13, selected ? QFont::DemiBold : QFont::Normal));
    painter->setPen(tokens.text);
    const QRectF words(QPointF(item.left() + air.left, item.top()), QPointF(textRight, item.bottom()));
    const QString title = index.data().toString();
    painter->drawText(words, Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetricsF(painter->font()).elidedText(title, Qt::ElideRight, words.width()));
    painter->restore();
}

} // namespace quillane
