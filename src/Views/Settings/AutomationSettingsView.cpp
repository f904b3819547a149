#include "Settings/AutomationSettingsView.h"
#include "AppLibrary.h"
#include "Components/Fonts.h"
#include "Components/Picker.h"
#include "Components/ShownText.h"
#include "Components/Stepper.h"
#include "Components/Switch.h"
#include "Components/SymbolView.h"
#include "Components/TextStyle.h"
#include "DefaultsKeys.h"
#include "ScanFrequency.h"
#include "Settings/KeyBinding.h"
#include "Settings/KeyObserver.h"
#include "Settings/SettingsGroup.h"
#include "Settings/SettingsRow.h"
#include "UserNotifications.h"
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <array>
#include <utility>

namespace quillane {

namespace {

using namespace DefaultsKeys;

constexpr std::array kNotifying = {kNudgeOnThreshold, kNudgeOnLowDisk, kNudgeOnNewOrphans, kNudgeOnNewStartup,
                                   kWeeklyReminder};
constexpr int kSymbol = 20;

// The bold is markup of our own text; nothing from outside comes here.
QLabel* makeMarkedText(const QString& text) {
    auto* const label = new QLabel(text);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    Fonts::follow(label, [label] { label->setFont(TextStyle::row().font()); });
    return label;
}

QWidget* makePromise() {
    auto* const promise = new QWidget;
    auto* const row = new QHBoxLayout(promise);
    row->setContentsMargins(4, 0, 14, 0);
    row->setSpacing(13);
    row->addWidget(new SymbolView(QStringLiteral("hand.raised.fill"), kSymbol, Tint::Link), 0, Qt::AlignTop);
    row->addWidget(makeMarkedText(QStringLiteral(
                       "Automations scan, measure and notify. <b>None of them remove anything.</b> Every "
                       "notification opens the review sheet, and the button at the bottom of it is still "
                       "yours to press.")),
                   1);
    return promise;
}

Picker* makeFrequencies(const QString& name, Defaults& defaults) {
    QStringList labels;
    std::vector<std::int64_t> hours;
    for (const auto frequency : kAllScanFrequencies) {
        labels << words(label(frequency));
        hours.push_back(rawValue(frequency));
    }
    auto* const picker = new Picker(name, labels);
    KeyBinding::bind(*picker, defaults, kScanFrequencyHours, hours);
    return picker;
}

// What a switch that is off makes idle.
void enableWhileOn(const SwitchRow& row, QWidget& what) {
    what.setEnabled(row.control()->isChecked());
    QObject::connect(row.control(), &Switch::toggled, &what, &QWidget::setEnabled);
}

} // namespace

AutomationSettingsView::AutomationSettingsView(AppLibrary& library, QWidget* parent)
    : SettingsPage(parent)
    , m_library(library)
    , m_defaults(library.platform().defaults)
    , m_notifies(anyNotification()) {
    add(makePromise());
    add(makeWatching());
    add(makeScanning());
    add(makeTelling());
    add(makeReminder());
    react();
}

bool AutomationSettingsView::anyNotification() const {
    return std::ranges::any_of(kNotifying, [this](auto key) { return m_defaults.boolean(key); });
}

SettingsGroup* AutomationSettingsView::makeWatching() {
    auto* const group = new SettingsGroup(
        QStringLiteral("Watching"),
        QStringLiteral("Watches the Applications folders. When an app disappears, the Overview shows what it "
                       "left behind so you can review it. Observe-only."));
    group->addRow(makeSwitch(QStringLiteral("Notice when I remove an app"), kWatchUninstalls));
    return group;
}

SettingsGroup* AutomationSettingsView::makeScanning() {
    auto* const group = new SettingsGroup(
        QStringLiteral("Scanning"),
        QStringLiteral("Keeps the Overview and the menu bar figure current without you opening the app."));
    auto* const row = makeSwitch(QStringLiteral("Rescan on a schedule"), kScheduledScans);
    const QString name = QStringLiteral("Frequency");
    auto* const frequency = new SettingsRow(name, makeFrequencies(name, m_defaults));
    enableWhileOn(*row, *frequency);
    group->addRow(row);
    group->addRow(frequency);
    return group;
}

SettingsGroup* AutomationSettingsView::makeTelling() {
    auto* const group = new SettingsGroup(
        QStringLiteral("Tell me when…"),
        QStringLiteral(
            "Each of these fires once when it becomes true and stays quiet until it clears and returns."));
    const QString threshold = QStringLiteral("Reclaimable space passes a threshold");
    const QString lowDisk = QStringLiteral("Free disk space gets low");
    group->addRow(makeFigure(threshold, kNudgeOnThreshold,
                             new Stepper(threshold, 1, 100, {}, QStringLiteral(" GB")), kThresholdGB));
    group->addRow(makeFigure(lowDisk, kNudgeOnLowDisk,
                             new Stepper(lowDisk, 2, 30, QStringLiteral("Below "), QStringLiteral("%")),
                             kLowDiskPercent));
    group->addRow(makeSwitch(QStringLiteral("An app I removed left files behind"), kNudgeOnNewOrphans));
    group->addRow(makeSwitch(QStringLiteral("Something new starts automatically"), kNudgeOnNewStartup));
    return group;
}

SettingsGroup* AutomationSettingsView::makeReminder() {
    auto* const group = new SettingsGroup(
        QStringLiteral("Reminder"),
        QStringLiteral("Once a week, the current reclaimable figure - only if it's over 500 MB."));
    group->addRow(makeSwitch(QStringLiteral("Weekly summary"), kWeeklyReminder));
    return group;
}

SwitchRow* AutomationSettingsView::makeSwitch(const QString& words, std::string_view key) {
    auto* const row = new SwitchRow(words);
    KeyBinding::bind(*row->control(), m_defaults, key);
    return row;
}

SettingsRow* AutomationSettingsView::makeFigure(const QString& words, std::string_view key, Stepper* stepper,
                                                std::string_view figureKey) {
    auto* const row = makeSwitch(words, key);
    KeyBinding::bind(*stepper, m_defaults, figureKey);
    row->addBefore(stepper);
    enableWhileOn(*row, *stepper);
    return row;
}

// Nothing else reacts: all other keys are read when they are needed.
void AutomationSettingsView::react() {
    new KeyObserver(m_defaults, kWatchUninstalls, [this] { m_library.syncUninstallWatcher(); }, this);
    for (const auto key : kNotifying) {
        new KeyObserver(m_defaults, key, [this] { noticeNotifications(); }, this);
    }
}

// The system asks the user when the first thing is turned on that would notify, and never before.
void AutomationSettingsView::noticeNotifications() {
    const bool notified = std::exchange(m_notifies, anyNotification());
    if (m_notifies && !notified) {
        m_library.platform().notifications.requestAuthorization();
    }
}

} // namespace quillane
