#include "Settings/GeneralSettings.h"
#include "AppLibrary.h"
#include "Components/LibraryObserver.h"
#include "Components/LivingDate.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/Switch.h"
#include "DefaultsKeys.h"
#include "NotificationCenter.h"
#include "Settings/KeyBinding.h"
#include "Settings/SettingsGroup.h"
#include "Settings/SettingsRow.h"
#include "State/Scenes.h"
#include "UpdaterController.h"

namespace quillane {

GeneralSettings::GeneralSettings(AppLibrary& library, NotificationCenter& notifications, Scenes& scenes,
                                 QWidget* parent)
    : SettingsPage(parent)
    , m_library(library)
    , m_notifications(notifications)
    , m_scenes(scenes) {
    add(makeMenuBar());
    add(makeUpdates());
    add(makeWays());
    auto* const observer = new LibraryObserver([this] { renderUpdates(); }, this);
    observer->renderNow();
}

SettingsGroup* GeneralSettings::makeMenuBar() {
    auto* const group = new SettingsGroup(
        {}, QStringLiteral("The reclaimable figure beside a sparkles icon, with a popover to review it. "
                           "Automations run only while Quillane is open, so the menu bar item is what keeps "
                           "them alive after you close the window."));
    auto* const row = new SwitchRow(QStringLiteral("Show in menu bar"));
    KeyBinding::bind(*row->control(), m_library.platform().defaults, DefaultsKeys::kShowMenuBarExtra);
    group->addRow(row);
    return group;
}

SettingsGroup* GeneralSettings::makeUpdates() {
    m_updates = new SettingsGroup;
    auto* const row = new SwitchRow(QStringLiteral("Check for updates automatically"));
    m_automatic = row->control();
    m_checkNow = new PushButton(QStringLiteral("Check Now"));
    m_updates->addRow(row);
    m_updates->addRow(new SettingsRow(QStringLiteral("Updates"), m_checkNow));
    m_lastCheck = new LivingDate(
        m_library.platform().clock, [this] { m_updates->setFootnote(updateFootnote()); }, m_updates);
    connect(m_automatic, &Switch::toggled, this, [this](bool isOn) {
        UpdaterController& updater = m_scenes.updater();
        if (isOn != updater.automaticallyChecksForUpdates.peek()) {
            updater.setAutomaticallyChecksForUpdates(isOn);
        }
    });
    connect(m_checkNow, &QPushButton::clicked, this, [this] { m_scenes.updater().checkForUpdates(); });
    return m_updates;
}

SettingsGroup* GeneralSettings::makeWays() {
    auto* const group = new SettingsGroup;
    auto* const access = new PushButton(QStringLiteral("Open System Settings…"));
    auto* const welcome = new PushButton(QStringLiteral("Show Welcome Again"));
    group->addRow(new SettingsRow(QStringLiteral("Full Disk Access"), access));
    group->addRow(new SettingsRow(QStringLiteral("Introduction"), welcome));
    connect(access, &QPushButton::clicked, this,
            [this] { AppLibrary::openFullDiskAccessSettings(m_library.platform()); });
    connect(welcome, &QPushButton::clicked, this, &GeneralSettings::showWelcome);
    return group;
}

void GeneralSettings::renderUpdates() {
    const UpdaterController& updater = m_scenes.updater();
    m_automatic->setChecked(updater.automaticallyChecksForUpdates.get());
    m_checkNow->setEnabled(updater.canCheckForUpdates.get());
    m_lastCheck->follow(updater.lastUpdateCheckDate.get());
}

QString GeneralSettings::updateFootnote() const {
    const auto version = m_scenes.updater().installedVersion();
    const QString check = m_lastCheck->date() ? QStringLiteral("Last checked ") + m_lastCheck->words()
                                              : QStringLiteral("Not checked yet");
    return QStringLiteral("Version ") + words(version.value_or("?")) + QStringLiteral(". ") + check +
           QStringLiteral(". An update is only installed after you click Install in the update window.");
}

// The welcome lies over the main window, which may be closed or behind this one.
void GeneralSettings::showWelcome() {
    m_scenes.showWindow({});
    m_notifications.post(NotificationName::kShowOnboarding);
}

} // namespace quillane
