#include "Settings/SettingsTabs.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kWidth = 92;
constexpr int kGap = 4;
constexpr int kAboveSymbol = 4;
constexpr int kSymbol = 21;
constexpr int kAboveWord = 4;
constexpr int kBelowWord = 6;
constexpr int kBesideWord = 12;
constexpr double kRadius = 8;

QFont fontOf(bool isCurrent) {
    return Fonts::of(12, isCurrent ? QFont::DemiBold : QFont::Normal);
}

} // namespace

SettingsTabs::SettingsTabs(QWidget* parent)
    : QTabBar(parent) {
    setAccessibleName(QStringLiteral("Settings"));
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideNone);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Fonts::follow(this, [this] { setFont(fontOf(true)); }); // tabs are laid out anew with it
}

void SettingsTabs::add(const QString& symbol, const QString& words) {
    setTabData(addTab(words), symbol);
}

QSize SettingsTabs::tabSizeHint(int index) const {
    const QFontMetrics words(fontOf(true)); // whichever is the current one, they stand still
    const int width = std::max(kWidth, words.horizontalAdvance(tabText(index)) + 2 * kBesideWord);
    return {width + kGap, kAboveSymbol + kSymbol + kAboveWord + words.height() + kBelowWord};
}

void SettingsTabs::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < count(); ++i) {
        paintGround(painter, i);
        paintTab(painter, i);
    }
}

void SettingsTabs::paintGround(QPainter& painter, int index) const {
    const Tokens& tokens = Tokens::current();
    const QRectF ground = QRectF(tabRect(index)).adjusted(kGap / 2.0, 0, -kGap / 2.0, 0);
    const bool isCurrent = index == currentIndex();
    if (isCurrent || tabAt(mapFromGlobal(QCursor::pos())) == index) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(isCurrent ? tokens.side : faded(tokens.side, 0.45));
        painter.drawRoundedRect(ground, kRadius, kRadius);
    }
    if (isCurrent && FocusRing::isShownFor(this)) {
        FocusRing::drawInside(painter, ground, kRadius);
    } else if (isCurrent && tokens.highContrast) {
        painter.setPen(tokens.line);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ground.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    }
}

void SettingsTabs::paintTab(QPainter& painter, int index) const {
    const Tokens& tokens = Tokens::current();
    const QRectF tab = tabRect(index);
    const bool isCurrent = index == currentIndex();
    Symbols::draw(painter, {tab.center().x() - kSymbol / 2.0, tab.top() + kAboveSymbol}, kSymbol,
                  symbol(index), isCurrent ? tokens.link : tokens.text2);
    painter.setFont(fontOf(isCurrent));
    painter.setPen(isCurrent ? tokens.text : tokens.text2);
    painter.drawText(tab.adjusted(0, kAboveSymbol + kSymbol + kAboveWord, 0, -kBelowWord),
                     Qt::AlignCenter | Qt::TextSingleLine, tabText(index));
}

void SettingsTabs::mouseMoveEvent(QMouseEvent* event) {
    QTabBar::mouseMoveEvent(event);
    update();
}

void SettingsTabs::leaveEvent(QEvent* event) {
    QTabBar::leaveEvent(event);
    update();
}

// Who scrolls the page means no other tab.
void SettingsTabs::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace quillane
