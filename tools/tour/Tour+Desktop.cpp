// The program on the desktop: the welcome, the settings, the item in the panel, and a window that is closed and comes
// back.
#include "AppLibrary.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "FakeMenuBarExtra.h"
#include "Formatting.h"
#include "MenuBar/MenuBarPopover.h"
#include "MenuBar/MenuBarView.h"
#include "Onboarding/OnboardingView.h"
#include "Overview/OverviewView.h"
#include "QuillaneApp.h"
#include "RecordingNotifications.h"
#include "Review/SweepPreviewSheet.h"
#include "Settings/SettingsView.h"
#include "Shell/ContentView.h"
#include "Tour.h"
#include "Visitor.h"
#include <QElapsedTimer>
#include <QTest>
#include <QWindow>
#include <array>
#include <utility>

namespace quillane {
namespace {

const std::array kTitles = {QStringLiteral("Welcome to Quillane"), QStringLiteral("Four places disk hides"),
                            QStringLiteral("Nothing moves without you"), QStringLiteral("One permission"),
                            QStringLiteral("Start with the Overview")};

// Where somebody presses the item: in a panel along the upper edge.
constexpr MenuBarExtra::Place kInPanel{900, 10};

QAbstractButton* button(const QWidget* widget, const QString& name) {
    for (auto* const found : widget->findChildren<QAbstractButton*>()) {
        if (found->isVisibleTo(widget) && found->accessibleName() == name) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

void Tour::beWelcomed() {
    check(*window().state().section == LibrarySection::overview,
          QStringLiteral("the first thing to see is not the Overview"));
    check(m_app.library().phase->kind != AppLibrary::Phase::Kind::idle,
          QStringLiteral("nothing is looked for behind the welcome"));
    readWelcome();
    check(m_app.library().platform().defaults.boolean(DefaultsKeys::kHasSeenOnboarding),
          QStringLiteral("who was welcomed will be welcomed again"));
    say(QStringLiteral("Welcomed, on %1 pages.").arg(kTitles.size()));
}

void Tour::readWelcome() {
    check(Visitor::waitUntil([this] { return window().onboarding() != nullptr; }),
          QStringLiteral("nobody is welcomed"));
    auto* const welcome = window().onboarding();
    if (welcome == nullptr) {
        return;
    }
    for (std::size_t page = 0; page < kTitles.size(); ++page) {
        check(welcome->page() == static_cast<int>(page), QStringLiteral("a page of the welcome is missing"));
        checkSeen(Visitor::words(welcome), kTitles.at(page));
        takeOf(*welcome, QStringLiteral("welcome-%1").arg(page));
        Visitor::press(welcome, Qt::Key_Return);
    }
    check(window().onboarding() == nullptr, QStringLiteral("the welcome does not end"));
}

void Tour::visitDesktop() {
    changeSettings();
    pressItem();
    closeAndComeBack();
}

void Tour::changeSettings() {
    Visitor::press(&window(), Qt::Key_Comma, Qt::ControlModifier);
    auto* const settings = m_app.settings();
    if (settings == nullptr) {
        check(false, QStringLiteral("the settings did not open"));
        return;
    }
    takeOf(*settings, QStringLiteral("settings-general"));
    settings->showTab(Scenes::SettingsTab::automation);
    Visitor::settle();
    auto& defaults = m_app.library().platform().defaults;
    for (const auto& [name, key] :
         {std::pair(QStringLiteral("Rescan on a schedule"), DefaultsKeys::kScheduledScans),
          std::pair(QStringLiteral("Weekly summary"), DefaultsKeys::kWeeklyReminder)}) {
        auto* const control = button(settings, name);
        if (control == nullptr) {
            check(false, QStringLiteral("no control is called ") + name);
            continue;
        }
        const bool before = defaults.boolean(key);
        Visitor::push(control);
        check(defaults.boolean(key) != before, QStringLiteral("a press changes nothing: ") + name);
        if (key == DefaultsKeys::kWeeklyReminder) {
            takeOf(*settings, QStringLiteral("settings-automation"));
        }
        Visitor::push(control);
        check(defaults.boolean(key) == before,
              QStringLiteral("a second press does not change it back: ") + name);
    }
    check(m_notifications.authorizationRequests > 0,
          QStringLiteral("nobody was asked whether something may be told"));
    settings->showTab(Scenes::SettingsTab::general);
    Visitor::settle();
    if (auto* const again = button(settings, QStringLiteral("Show Welcome Again"))) {
        Visitor::push(again);
        readWelcome();
    }
    Visitor::press(settings, Qt::Key_Escape);
    check(m_app.settings() == nullptr, QStringLiteral("the settings do not close"));
    say(QStringLiteral("Settings changed and changed back; welcomed again."));
}

// What the popover must show is what the library knows, which has been compared with the disk by now.
void Tour::pressItem() {
    auto& library = m_app.library();
    const auto figure = words(Formatting::byteCount(library.selectedSweepBytes()));
    check(m_panel.figure == Formatting::byteCountInMegabytesOrGigabytes(library.selectedSweepBytes()),
          QStringLiteral("beside the item stands ") + words(m_panel.figure));
    auto* const popover = openPopover();
    if (popover == nullptr) {
        return;
    }
    const auto seen = Visitor::words(popover);
    checkSeen(seen, figure);
    for (const auto category : kAllSweepCategories) {
        if (library.sweepSelection->contains(category)) {
            checkSeen(seen, words(rawValue(category)));
            checkSeen(seen, words(Formatting::byteCount(library.bytes(category))));
        }
    }
    takeOf(*popover, QStringLiteral("popover"));
    window().showSection(LibrarySection::files);
    Visitor::push(popover->view()->reviewButton());
    check(m_app.menuBarItem().popover() == nullptr, QStringLiteral("the popover stays over the review"));
    check(*window().state().section == LibrarySection::overview && overview()->review() != nullptr,
          QStringLiteral("the popover does not lead to the review"));
    if (auto* const sheet = overview()->review()) {
        Visitor::press(sheet, Qt::Key_Escape);
    }
    say(QStringLiteral("In the panel: %1. Its popover leads to the review.").arg(figure));
}

MenuBarPopover* Tour::openPopover() {
    QTest::qWait(
        static_cast<int>(MenuBarItem::kAfterClosing.count())); // or it counts as the press that closed it
    m_panel.press({.place = kInPanel, .activationToken = {}});
    check(Visitor::waitUntil([this] { return m_app.menuBarItem().popover() != nullptr; }, 20),
          QStringLiteral("a press on the item opens nothing"));
    Visitor::settle();
    return m_app.menuBarItem().popover();
}

void Tour::closeAndComeBack() {
    window().close();
    Visitor::settle();
    check(m_app.window() == nullptr, QStringLiteral("the window does not close"));
    auto* const popover = openPopover();
    if (popover == nullptr) {
        m_app.showWindow();
        return;
    }
    QElapsedTimer sinceClick;
    sinceClick.start();
    auto* const open = popover->view()->windowButton();
    QTest::mouseClick(open, Qt::LeftButton);
    check(Visitor::waitUntil(
              [this] { return m_app.window() != nullptr && m_app.window()->windowHandle()->isExposed(); }),
          QStringLiteral("the window does not come back"));
    const auto milliseconds = sinceClick.elapsed();
    check(m_app.library().phase->kind == AppLibrary::Phase::Kind::ready,
          QStringLiteral("a window that comes back has everything looked for again"));
    take(QStringLiteral("window-that-came-back"));
    say(QStringLiteral("Closed, and back %1 ms after a click in the popover.").arg(milliseconds));
}

} // namespace quillane
