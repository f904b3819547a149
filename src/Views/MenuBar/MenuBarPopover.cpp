#include "MenuBar/MenuBarPopover.h"
#include "Components/RoundRegion.h"
#include "Components/SystemLook.h"
#include "Components/Tokens.h"
#include "MenuBar/MenuBarView.h"
#include "MenuBar/PopoverPlace.h"
#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <vector>

namespace quillane {

namespace {

constexpr double kRadius = 12;

std::vector<PopoverPlace::Screen> screens() {
    std::vector<PopoverPlace::Screen> all;
    for (const auto* const screen : QGuiApplication::screens()) {
        all.push_back({screen->geometry(), screen->availableGeometry()});
    }
    return all;
}

} // namespace

MenuBarPopover::MenuBarPopover(AppLibrary& library, std::optional<QPoint> press)
    : m_press(press)
    , m_view(new MenuBarView(library)) {
    setWindowFlags(typeOn(QGuiApplication::platformName()) | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, SystemLook::blendsWindows()); // for the round corners
    setWindowTitle(QStringLiteral("Quillane"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_view);
    // With the screen its panel has gone, or stands somewhere else.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QWidget::close);
}

Qt::WindowType MenuBarPopover::typeOn(const QString& platformName) {
    return platformName.startsWith(QLatin1String("wayland")) ? Qt::Tool : Qt::Popup;
}

void MenuBarPopover::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    const double corner = testAttribute(Qt::WA_TranslucentBackground) ? kRadius : 0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(tokens.line);
    painter.setBrush(tokens.page);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

void MenuBarPopover::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        setMask(roundRegion(size(), kRadius));
    }
    place();
}

void MenuBarPopover::place() {
    move(PopoverPlace::of(m_press, QCursor::pos(), screens(), size()));
}

void MenuBarPopover::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    place();
    m_view->takeFocus();
    if (windowType() == Qt::Tool) {
        activateWindow(); // a popup has the keyboard by itself
    }
}

void MenuBarPopover::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous()) {
        emit closed();
    }
}

void MenuBarPopover::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

void MenuBarPopover::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    const bool hasLostKeyboard = event->type() == QEvent::ActivationChange && !isActiveWindow();
    if (hasLostKeyboard && windowType() == Qt::Tool) {
        close();
    }
}

} // namespace quillane
