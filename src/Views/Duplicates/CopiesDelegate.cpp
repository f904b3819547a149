#include "Duplicates/CopiesDelegate.h"
#include "Components/Badge.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/ProtectedMark.h"
#include "Components/Symbols.h"
#include "Components/TextStyle.h"
#include "Components/Tokens.h"
#include "Duplicates/CopiesList.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

constexpr int kBetweenRows = 2;
constexpr int kPadding = 10; // above the folder and below the second line
constexpr int kBetweenLines = 1;
constexpr int kEdge = 11; // between the ground of a row and what stands first and last on it
constexpr int kSymbol = 16;
constexpr int kGap = 11;
constexpr int kBadgeGap = 8;
constexpr int kLook = 26;
constexpr int kLookEdge = 10;
constexpr int kLookSymbol = 14;
constexpr int kMark = 15;
constexpr int kRadius = 8;
constexpr int kRingRadius = 6;

QFont folderFont() {
    return Fonts::of(TextStyle::body().px, QFont::Medium);
}

QFont secondFont() {
    return TextStyle::caption().font();
}

int heightOf(const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

QRect groundOf(const QRect& row) {
    return row.adjusted(0, 0, 0, -kBetweenRows);
}

QRect squareIn(const QRect& ground, int left, int side) {
    return {left, ground.top() + (ground.height() - side) / 2, side, side};
}

bool isChosen(const QModelIndex& index) {
    return index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

void drawWords(QPainter& painter, const QRect& line, const QFont& font, const QColor& color,
               const QString& text) {
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(line, Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideMiddle, std::max(0, line.width())));
}

// The word stands right behind the folder, which makes room for it.
void drawFolder(QPainter& painter, const QRect& line, const QModelIndex& index) {
    const auto folder = index.data().toString();
    QSize badge(0, 0);
    if (index.data(CopiesList::NewestRole).toBool()) {
        badge = Badge::sizeOf(CopiesDelegate::newestWord(), {}, Badge::Kind::Capsule);
    }
    const int taken = badge.isEmpty() ? 0 : badge.width() + kBadgeGap;
    const int wanted = static_cast<int>(std::ceil(QFontMetricsF(folderFont()).horizontalAdvance(folder)));
    const int width = std::min(wanted, line.width() - taken);
    drawWords(painter, {line.topLeft(), QSize(width, line.height())}, folderFont(), Tokens::current().text,
              folder);
    if (!badge.isEmpty()) {
        const QRectF place(line.left() + width + kBadgeGap,
                           line.top() + std::round((line.height() - badge.height()) / 2.0), badge.width(),
                           badge.height());
        Badge::draw(painter, place, CopiesDelegate::newestWord(), {}, Tint::Secondary, Badge::Kind::Capsule);
    }
}

void drawLines(QPainter& painter, const QRect& room, const QModelIndex& index) {
    const QRect folder(room.left(), room.top() + kPadding, room.width(), heightOf(folderFont()));
    drawFolder(painter, folder, index);
    const QRect second(room.left(), folder.bottom() + 1 + kBetweenLines, room.width(),
                       heightOf(secondFont()));
    drawWords(painter, second, secondFont(), Tokens::current().text2,
              index.data(CopiesList::SecondLineRole).toString());
}

void drawGround(QPainter& painter, const QRect& ground) {
    const Tokens& tokens = Tokens::current();
    painter.setPen(Qt::NoPen);
    painter.setBrush(tokens.soft(Tint::Link));
    painter.drawRoundedRect(ground, kRadius, kRadius);
    if (tokens.highContrast) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(tokens.link);
        painter.drawRoundedRect(QRectF(ground).adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 0.5, kRadius - 0.5);
    }
}

void drawRing(QPainter& painter, const QStyleOptionViewItem& option) {
    const auto* const list = qobject_cast<const CopiesList*>(option.widget);
    if (list == nullptr || !(option.state & QStyle::State_HasFocus) || !FocusRing::isShownFor(list)) {
        return;
    }
    const bool isOnLook = list->part() == CopiesList::Part::Look;
    FocusRing::drawInside(painter, isOnLook ? CopiesDelegate::lookOf(option.rect) : groundOf(option.rect),
                          isOnLook ? kRingRadius : kRadius);
}

} // namespace

QString CopiesDelegate::newestWord() {
    return QStringLiteral("newest");
}

int CopiesDelegate::rowHeight() {
    return 2 * kPadding + heightOf(folderFont()) + kBetweenLines + heightOf(secondFont()) + kBetweenRows;
}

QRect CopiesDelegate::lookOf(const QRect& row) {
    const QRect ground = groundOf(row);
    return squareIn(ground, ground.right() + 1 - kLookEdge - kLook, kLook);
}

QRect CopiesDelegate::markOf(const QRect& row) {
    return squareIn(groundOf(row), lookOf(row).left() - kGap - kMark, kMark);
}

QSize CopiesDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    constexpr int kLeastWidth = 100;
    return {kLeastWidth, rowHeight()};
}

void CopiesDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
    const Tokens& tokens = Tokens::current();
    const QRect ground = groundOf(option.rect);
    const QRect symbol = squareIn(ground, ground.left() + kEdge, kSymbol);
    const QRect look = lookOf(option.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (isChosen(index)) {
        drawGround(*painter, ground);
    }
    Symbols::draw(*painter, symbol.topLeft(), kSymbol,
                  isChosen(index) ? QStringLiteral("checkmark.circle.fill") : QStringLiteral("circle"),
                  isChosen(index) ? tokens.link : tokens.text2);
    Symbols::draw(*painter, squareIn(look, look.left() + (kLook - kLookSymbol) / 2, kLookSymbol).topLeft(),
                  kLookSymbol, QStringLiteral("magnifyingglass"), tokens.text2);
    int end = look.left() - kGap;
    if (index.data(CopiesList::ProtectedRole).toBool()) {
        const QRect mark = markOf(option.rect);
        Symbols::draw(*painter, mark.topLeft(), kMark, ProtectedMark::symbolName(), tokens.tint(Tint::Green));
        end = mark.left() - kGap;
    }
    const int begin = symbol.right() + 1 + kGap;
    drawLines(*painter, {begin, ground.top(), end - begin, ground.height()}, index);
    drawRing(*painter, option);
    painter->restore();
}

bool CopiesDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
    QString help;
    if (event->type() == QEvent::ToolTip && lookOf(option.rect).contains(event->pos())) {
        help = CopiesList::lookName();
    } else if (event->type() == QEvent::ToolTip && index.data(CopiesList::ProtectedRole).toBool() &&
               markOf(option.rect).contains(event->pos())) {
        help = ProtectedMark::helpText();
    }
    if (help.isEmpty()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    QToolTip::showText(event->globalPos(), help, view);
    return true;
}

} // namespace quillane
