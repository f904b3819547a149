#include "Shell/WindowCommands.h"
#include "AppLibrary.h"
#include "Components/LibraryObserver.h"
#include "Components/SearchField.h"
#include "Components/ShownText.h"
#include "Components/SystemLook.h"
#include "NotificationCenter.h"
#include "Review/PutBack.h"
#include "Shell/BrandButton.h"
#include "Shell/ContentView.h"
#include "Shell/Sidebar.h"
#include "State/Scenes.h"
#include "UpdaterController.h"
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <optional>

namespace quillane {

WindowCommands::WindowCommands(ContentView& window)
    : QObject(&window)
    , m_window(window) {
    makeSearchKey();
    makeSectionKeys();
    makeMenu({makeRescan(), makePutBack(), makeSettings(), makeGrantAccess(), makeCheckForUpdates(),
              makeWelcome(), makeQuit()});
}

WindowCommands::~WindowCommands() = default;

// An action of the window, so that its keys work whatever has the focus. Where there is a menu bar Qt guesses by an
// action's words what it is for, unless it is told.
QAction* WindowCommands::command(const QString& text, const QKeySequence& keys) {
    auto* const action = new QAction(text, this);
    action->setMenuRole(QAction::NoRole);
    action->setShortcut(keys);
    m_window.addAction(action);
    return action;
}

void WindowCommands::makeSearchKey() {
    auto* const search = command(QStringLiteral("Search"), QKeySequence(Qt::CTRL | Qt::Key_F));
    connect(search, &QAction::triggered, this, [this] {
        m_window.searchField()->setFocus(Qt::ShortcutFocusReason);
        m_window.searchField()->selectAll();
    });
}

// The number is the section's place among all sections, so that it stays the same for good.
void WindowCommands::makeSectionKeys() {
    for (std::size_t i = 0; i < kAllLibrarySections.size(); ++i) {
        const auto section = kAllLibrarySections[i];
        if (!m_window.content(section)) {
            continue;
        }
        auto* const go =
            command(words(rawValue(section)), QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + i)));
        connect(go, &QAction::triggered, this, [this, section] { m_window.enterSection(section); });
    }
}

QAction* WindowCommands::makeRescan() {
    auto* const action = command(QStringLiteral("Rescan Applications"), QKeySequence(Qt::CTRL | Qt::Key_R));
    connect(action, &QAction::triggered, this,
            [this] { m_window.library().refresh(AppLibrary::ScanReason::user); });
    return action;
}

// A text field with the focus keeps the keys while it has typing to take back; the menu's entry does not ask.
QAction* WindowCommands::makePutBack() {
    auto* const action = command(QStringLiteral("Put Back Last Cleanup"), QKeySequence(Qt::CTRL | Qt::Key_Z));
    connect(action, &QAction::triggered, m_window.putBack(), &PutBack::start);
    auto* const observer = new LibraryObserver(
        [this, action] {
            action->setEnabled(m_window.library().lastOperation->has_value() &&
                               !m_window.library().isSweeping.get() && !m_window.state().isPuttingBack.get());
        },
        this);
    observer->renderNow();
    return action;
}

QAction* WindowCommands::makeGrantAccess() {
    auto* const action = command(QStringLiteral("Grant Full Disk Access…"), {});
    action->setMenuRole(
        QAction::ApplicationSpecificRole); // stands with the settings where there is such a place
    connect(action, &QAction::triggered, this,
            [this] { AppLibrary::openFullDiskAccessSettings(m_window.library().platform()); });
    return action;
}

QAction* WindowCommands::makeSettings() {
    auto* const action = command(QStringLiteral("Settings…"), QKeySequence(Qt::CTRL | Qt::Key_Comma));
    action->setMenuRole(QAction::PreferencesRole);
    auto* const scenes = m_window.state().scenes;
    action->setEnabled(scenes != nullptr);
    connect(action, &QAction::triggered, this,
            [scenes] { scenes->showSettings(Scenes::SettingsTab::general); });
    return action;
}

QAction* WindowCommands::makeCheckForUpdates() {
    auto* const action = command(QStringLiteral("Check for Updates…"), {});
    action->setMenuRole(QAction::ApplicationSpecificRole);
    auto* const scenes = m_window.state().scenes;
    connect(action, &QAction::triggered, this, [scenes] { scenes->updater().checkForUpdates(); });
    auto* const observer = new LibraryObserver(
        [scenes, action] {
            action->setEnabled(scenes != nullptr && scenes->updater().canCheckForUpdates.get());
        },
        this);
    observer->renderNow();
    return action;
}

QAction* WindowCommands::makeWelcome() {
    auto* const action = command(QStringLiteral("Welcome to Quillane"), {});
    connect(action, &QAction::triggered, this,
            [this] { m_window.state().notifications->post(NotificationName::kShowOnboarding); });
    return action;
}

QAction* WindowCommands::makeQuit() {
    auto* const action = command(QStringLiteral("Quit Quillane"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    action->setMenuRole(QAction::QuitRole);
    connect(action, &QAction::triggered, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return action;
}

void WindowCommands::makeMenu(const Commands& commands) {
    if (SystemLook::hasMenuBar()) {
        makeMenuBar(commands);
        return;
    }
    m_windowMenu = new QMenu(&m_window);
    m_windowMenu->setAccessibleName(QStringLiteral("Menu"));
    m_windowMenu->addActions({commands.rescan, commands.putBack});
    m_windowMenu->addSeparator();
    m_windowMenu->addActions({commands.settings, commands.grantAccess});
    m_windowMenu->addSeparator();
    m_windowMenu->addActions({commands.checkForUpdates, commands.welcome});
    m_windowMenu->addSeparator();
    m_windowMenu->addAction(commands.quit);
    auto* const open = command(QStringLiteral("Menu"), QKeySequence(Qt::Key_F10));
    connect(open, &QAction::triggered, this, [this] { m_window.sidebar()->brand()->openMenu(); });
}

QAction* WindowCommands::makeAbout() {
    auto* const action = command(QStringLiteral("About Quillane"), {});
    action->setMenuRole(QAction::AboutRole);
    auto* const scenes = m_window.state().scenes;
    connect(action, &QAction::triggered, this, [this, scenes] {
        const auto version = scenes == nullptr ? std::nullopt : scenes->updater().installedVersion();
        QMessageBox::about(&m_window, QStringLiteral("About Quillane"),
                           version ? words("Quillane " + *version) : QStringLiteral("Quillane"));
    });
    return action;
}

// What has a role the system moves to the application's own menu, wherever it was added. The bar belongs to no window, so
// that it stands over the settings too.
void WindowCommands::makeMenuBar(const Commands& commands) {
    m_menuBar = std::make_unique<QMenuBar>(nullptr);
    m_menuBar->addMenu(QStringLiteral("File"))
        ->addActions({commands.rescan, makeAbout(), commands.checkForUpdates, commands.settings,
                      commands.grantAccess, commands.quit});
    m_menuBar->addMenu(QStringLiteral("Edit"))->addAction(commands.putBack);
    m_menuBar->addMenu(QStringLiteral("Help"))->addAction(commands.welcome);
}

} // namespace quillane
