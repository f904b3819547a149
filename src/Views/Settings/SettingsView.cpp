#include "Settings/SettingsView.h"
#include "AppLibrary.h"
#include "Components/ColumnGround.h"
#include "Components/Fonts.h"
#include "Components/PaneScroll.h"
#include "Components/Rule.h"
#include "Components/Stepper.h"
#include "Settings/AutomationSettingsView.h"
#include "Settings/GeneralSettings.h"
#include "Settings/SettingsTabs.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kAboveTabs = 8;
constexpr int kBelowTabs = 7;
constexpr int kTitleBar = 40; // more than any desktop draws round a window

QRect clampedInto(const QRect& screen, QRect rect) {
    rect.moveLeft(std::max(screen.left(), std::min(rect.left(), screen.right() + 1 - rect.width())));
    rect.moveTop(std::max(screen.top(), std::min(rect.top(), screen.bottom() + 1 - rect.height())));
    return rect;
}

QScreen* screenOfPointer() {
    QScreen* const screen = QGuiApplication::screenAt(QCursor::pos());
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

} // namespace

// The order of construction is the order of Tab: the tabs, then what they show.
SettingsView::SettingsView(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                           QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_tabs(new SettingsTabs)
    , m_strip(new ColumnGround(ColumnGround::Ground::Sidebar))
    , m_pages(new QStackedWidget) {
    setWindowTitle(QStringLiteral("Settings"));
    makeStrip();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_strip);
    column->addWidget(new Rule);
    column->addWidget(m_pages, 1);
    addTab(QStringLiteral("gearshape"), QStringLiteral("General"),
           new GeneralSettings(library, notifications, scenes));
    addTab(QStringLiteral("clock.arrow.2.circlepath"), QStringLiteral("Automation"),
           new AutomationSettingsView(library));
    connect(m_tabs, &SettingsTabs::currentChanged, this, &SettingsView::enter);
    makeShortcuts();
    Fonts::follow(this, [this] { fit(); });
    m_tabs->setFocus();
}

void SettingsView::makeStrip() {
    auto* const row = new QHBoxLayout(m_strip);
    row->setContentsMargins(0, kAboveTabs, 0, kBelowTabs);
    row->addWidget(m_tabs, 0, Qt::AlignCenter);
}

void SettingsView::addTab(const QString& symbol, const QString& words, SettingsPage* page) {
    m_pages->addWidget(new PaneScroll(words, page));
    page->installEventFilter(this);
    m_tabs->add(symbol, words);
}

void SettingsView::makeShortcuts() {
    const auto on = [this](const QKeySequence& keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    on(QKeySequence(Qt::CTRL | Qt::Key_W), [this] { close(); });
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this), &QShortcut::activated, qApp,
            &QCoreApplication::quit, Qt::QueuedConnection);
    for (const auto& keys : QKeySequence::keyBindings(QKeySequence::NextChild)) {
        on(keys, [this] { step(1); });
    }
    for (const auto& keys : QKeySequence::keyBindings(QKeySequence::PreviousChild)) {
        on(keys, [this] { step(-1); });
    }
}

void SettingsView::showTab(Scenes::SettingsTab tab) {
    m_tabs->setCurrentIndex(static_cast<int>(tab));
}

Scenes::SettingsTab SettingsView::tab() const {
    return static_cast<Scenes::SettingsTab>(m_tabs->currentIndex());
}

SettingsPage* SettingsView::page(Scenes::SettingsTab tab) const {
    auto* const scroll = qobject_cast<PaneScroll*>(m_pages->widget(static_cast<int>(tab)));
    return qobject_cast<SettingsPage*>(scroll->widget());
}

void SettingsView::finishInput() {
    for (auto* const stepper : findChildren<Stepper*>()) {
        stepper->interpretText();
    }
}

// A control that goes out of sight leaves the keyboard to the tabs.
void SettingsView::enter(int index) {
    if (focusWidget() != nullptr && m_pages->isAncestorOf(focusWidget())) {
        m_tabs->setFocus(Qt::ShortcutFocusReason);
    }
    m_pages->setCurrentIndex(index);
    fit();
}

// After the last comes the first.
void SettingsView::step(int by) {
    m_tabs->setCurrentIndex((m_tabs->currentIndex() + by + m_tabs->count()) % m_tabs->count());
}

void SettingsView::fit() {
    const int wanted = m_strip->sizeHint().height() + 1 + page(tab())->heightForWidth(kWidth);
    setFixedSize(kWidth, std::min(wanted, screen()->availableGeometry().height() - kTitleBar));
}

// It can't be made smaller by hand, so it follows the screen that it is on: one may go, or get another size.
void SettingsView::followScreen() {
    disconnect(m_room);
    m_room = connect(screen(), &QScreen::availableGeometryChanged, this, [this] { fit(); });
    fit();
}

void SettingsView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    connect(windowHandle(), &QWindow::screenChanged, this, &SettingsView::followScreen, Qt::UniqueConnection);
    followScreen();
}

void SettingsView::placeOver(const QWidget* window) {
    const bool isOver = window != nullptr && window->isVisible() && !window->isMinimized();
    setScreen(isOver ? window->screen() : screenOfPointer());
    fit();
    const QRect within = screen()->availableGeometry().adjusted(0, kTitleBar, 0, 0);
    QRect rect(QPoint(), frameGeometry().size());
    rect.moveCenter(isOver ? window->frameGeometry().center() : within.center());
    move(clampedInto(within, rect).topLeft());
}

void SettingsView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

// A sentence may need another line than before.
bool SettingsView::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && object == page(tab())) {
        fit();
    }
    return QWidget::eventFilter(object, event);
}

} // namespace quillane
