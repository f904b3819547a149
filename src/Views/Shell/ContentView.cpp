#include "Shell/ContentView.h"
#include "AppLibrary.h"
#include "Applications/StatusLine.h"
#include "Components/AccessBanner.h"
#include "Components/Announcement.h"
#include "Components/ColumnGround.h"
#include "Components/LibraryObserver.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Components/SearchField.h"
#include "Components/ShownText.h"
#include "Components/SidebarView.h"
#include "Components/ToolbarRow.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "Onboarding/OnboardingView.h"
#include "Panes/SectionDetail.h"
#include "Preview/QuickLookPanel.h"
#include "Preview/SystemQuickLook.h"
#include "Review/PutBack.h"
#include "Review/SweepPreviewSheet.h"
#include "Shell/BrandButton.h"
#include "Shell/ColumnSplitter.h"
#include "Shell/Sidebar.h"
#include "Shell/WindowCommands.h"
#include <QAbstractItemView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace quillane {

namespace {

constexpr int kSidebarWidth = 212;
constexpr int kSidebarNarrow = 196; // while the window is narrower than this:
constexpr int kNarrowWindow = 1180;
// The smallest window leaves this beside the sidebar and the narrowest pane; every table fits into it.
constexpr int kMiddleNarrowest =
    ContentView::kMinimumSize.width() - kSidebarNarrow - ContentView::kDetailNarrowest - 2;

QVBoxLayout* columnLayout(QWidget* column) {
    auto* const layout = new QVBoxLayout(column);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

} // namespace

ContentView::ContentView(AppLibrary& library, NotificationCenter& notifications, Scenes* scenes,
                         QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_state(initialSection())
    , m_showSection(
          notifications.observe(NotificationName::kShowSection,
                                [this](const NotificationCenter::Object& title) { receive(title); }))
    , m_showOverview(notifications.observe(
          NotificationName::kShowOverview,
          [this](const NotificationCenter::Object&) { showSection(LibrarySection::overview); }))
    , m_showOnboarding(
          notifications.observe(NotificationName::kShowOnboarding, [this](const NotificationCenter::Object&) {
              m_state.showOnboarding = true;
          })) {
    m_state.showOnboarding = !library.platform().defaults.boolean(DefaultsKeys::kHasSeenOnboarding);
    m_state.notifications = &notifications;
    m_state.scenes = scenes;
    m_state.putBack = new PutBack(library, m_state, *this);
    setWindowTitle(QStringLiteral("Quillane"));
    setMinimumSize(kMinimumSize);
    resize(kDefaultSize);
    makeScreens();
    makeColumns();
    bindSearch();
    makeCommands();
    noticeActivation();
    m_sectionObserver = new LibraryObserver([this] { renderSection(); }, this);
    m_sectionObserver->renderNow();
    m_removalObserver = new LibraryObserver([this] { renderRemoval(); }, this);
    m_removalObserver->renderNow();
    m_onboardingObserver = new LibraryObserver([this] { renderOnboarding(); }, this);
    m_onboardingObserver->renderNow();
    m_bannerObserver = new LibraryObserver([this] { renderBanner(); }, this);
    m_bannerObserver->renderNow();
    m_scanObserver = new LibraryObserver([this] { announceScan(); }, this);
    m_scanObserver->renderNow();
    makeQuickLook();
    m_sections->currentWidget()->setFocus();
}

ContentView::~ContentView() {
    delete m_quickLook; // these read and write the state to their end
    delete m_systemQuickLook;
    for (QDialog* const sheet :
         {static_cast<QDialog*>(m_removalSheet), static_cast<QDialog*>(m_onboarding)}) {
        if (sheet != nullptr) {
            sheet->disconnect(this); // it goes after the state that its end would write to
        }
    }
}

void ContentView::makeQuickLook() {
    const auto list = [this] { return listToMoveIn(); };
    auto& panel = m_library.platform().previewPanel;
    if (panel.isThere()) {
        m_systemQuickLook = new SystemQuickLook(panel, m_state, *this, list);
    } else {
        m_quickLook = new QuickLookPanel(m_library, m_state, *this, list);
    }
}

// A list of the pane that has the keyboard, else the section's own, wherever the keyboard is.
QWidget* ContentView::listToMoveIn() const {
    auto* const focused = qobject_cast<QAbstractItemView*>(focusWidget());
    if (focused != nullptr && m_details->isAncestorOf(focused)) {
        return focused;
    }
    auto* const section = m_sections->currentWidget();
    return section->focusProxy() != nullptr ? section->focusProxy() : section;
}

void ContentView::makeScreens() {
    std::vector<Sidebar::Entry> entries;
    for (const auto& standing : standingScreens()) {
        m_screens.push_back(standing.make(m_library, m_state));
        entries.push_back({standing.section, m_screens.back().badge, standing.badgeTint});
    }
    m_sidebar = new Sidebar(m_state, std::move(entries));
}

// The order of construction is the order of Tab: sidebar, search, section, pane.
void ContentView::makeColumns() {
    m_middle = new ColumnGround(ColumnGround::Ground::Base);
    m_middle->setMinimumWidth(kMiddleNarrowest);
    m_search = new SearchField;
    m_header = new ToolbarRow;
    m_header->addControl(m_search);
    const Platform& platform = m_library.platform();
    m_banner = new AccessBanner([platform] { AppLibrary::openFullDiskAccessSettings(platform); },
                                [platform] { AppLibrary::relaunch(platform); });
    m_sections = new QStackedWidget;
    auto* const middleColumn = columnLayout(m_middle);
    middleColumn->addWidget(m_header);
    middleColumn->addWidget(m_banner);
    middleColumn->addWidget(m_sections, 1);

    auto* const right = new ColumnGround(ColumnGround::Ground::Page);
    right->setMinimumWidth(kDetailNarrowest);
    right->setMaximumWidth(kDetailWidest);
    m_details = new QStackedWidget;
    columnLayout(right)->addWidget(m_details);
    for (const auto& screen : m_screens) {
        m_sections->addWidget(screen.content);
        m_details->addWidget(screen.detail);
        if (auto* const pane = qobject_cast<SectionDetail*>(screen.detail)) {
            pane->setKeyboardHeir(screen.content);
        }
    }

    m_columns = new ColumnSplitter;
    m_columns->addWidget(m_middle);
    m_columns->addWidget(right);
    m_middle->lower(); // a splitter lowers what joins it, and assistive tools read from the lowest up
    m_columns->setStretchFactor(0, 1);
    m_columns->setStretchFactor(1, 0);
    m_columns->setSizes({kDefaultSize.width(), kDetailNarrowest});

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar);
    row->addWidget(new Rule(Rule::Weight::Edge, Qt::Vertical));
    row->addWidget(m_columns, 1);
}

void ContentView::bindSearch() {
    connect(m_search, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_library.searchText = text.toStdString(); });
    m_searchObserver = new LibraryObserver(
        [this] {
            const QString text = words(m_library.searchText.get());
            if (m_search->text() != text) {
                m_search->setText(text);
            }
        },
        this);
    m_searchObserver->renderNow();
}

// The user may come back from the system's settings, where access was granted.
void ContentView::noticeActivation() {
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            m_library.appBecameActive();
        }
    });
}

void ContentView::renderBanner() {
    m_banner->setVisible(m_library.phase->kind == AppLibrary::Phase::Kind::ready &&
                         m_library.trashState->needsFullDiskAccess);
    // The new process waits for this one for seconds only, and a sweep or a put back may take longer.
    const bool isSweeping = m_library.isSweeping.get();
    m_banner->relaunchButton()->setEnabled(!m_library.isPuttingBack.get() && !isSweeping);
}

// Whatever the window shows, as somebody may wait for it in any section.
void ContentView::announceScan() {
    const auto& phase = m_library.phase.get();
    const bool isOver = phase.kind == AppLibrary::Phase::Kind::ready;
    if (isOver && m_isScanning) {
        speak(*this,
              QStringLiteral("Scan finished. ") + StatusLine::words(phase, m_library.visibleApps().size()));
    }
    m_isScanning = !isOver && phase.kind != AppLibrary::Phase::Kind::idle;
}

void ContentView::makeCommands() {
    auto* const commands = new WindowCommands(*this);
    m_sidebar->brand()->setMenu(commands->windowMenu());
}

QWidget* ContentView::content(LibrarySection section) const {
    const int index = indexOf(section);
    return index < 0 ? nullptr : m_screens[static_cast<std::size_t>(index)].content;
}

QWidget* ContentView::detail(LibrarySection section) const {
    const int index = indexOf(section);
    return index < 0 ? nullptr : m_screens[static_cast<std::size_t>(index)].detail;
}

int ContentView::indexOf(LibrarySection section) const {
    const auto standing = standingScreens();
    const auto found = std::ranges::find(standing, section, &StandingScreen::section);
    return found == standing.end() ? -1 : static_cast<int>(found - standing.begin());
}

void ContentView::showSection(LibrarySection section) {
    if (indexOf(section) >= 0) {
        m_state.section = section;
    }
}

void ContentView::enterSection(LibrarySection section) {
    if (indexOf(section) >= 0) {
        showSection(section);
        m_sectionObserver->renderNow();
        content(section)->setFocus(Qt::ShortcutFocusReason);
    }
}

void ContentView::receive(const NotificationCenter::Object& title) {
    const auto section = title ? librarySectionFromRawValue(*title) : std::nullopt;
    if (section) {
        showSection(*section);
    }
}

void ContentView::renderSection() {
    const LibrarySection section = m_state.section.get();
    const int index = indexOf(section);
    m_header->setTitle(words(rawValue(section)));
    // Cards lie on the page, tables on a ground of their own.
    m_middle->setGround(section == LibrarySection::overview ? ColumnGround::Ground::Page
                                                            : ColumnGround::Ground::Base);
    const bool paneHasKeyboard = focusWidget() != nullptr && m_details->isAncestorOf(focusWidget());
    m_sections->setCurrentIndex(index);
    if (paneHasKeyboard && index != m_details->currentIndex()) {
        m_sections->currentWidget()->setFocus(); // the pane that comes may have nothing that takes it
    }
    m_details->setCurrentIndex(index);
}

void ContentView::presentRemoval(BulkRemoval removal) {
    m_state.removal = std::move(removal);
    m_removalObserver->renderNow();
}

SweepPreviewSheet* ContentView::removalSheet() const {
    return m_removalSheet;
}

void ContentView::renderRemoval() {
    const auto removal = m_state.removal.get(); // a copy: opening the sheet may change the field
    if (m_state.showOnboarding.get() || !removal || m_removalSheet) {
        return;
    }
    const bool isReviewing = qobject_cast<SweepPreviewSheet*>(Sheet::openOver(*this)) != nullptr;
    if (removal->entries.empty() || isReviewing || m_library.isSweeping.get()) {
        m_state.removal = std::nullopt;
        return;
    }
    if (Sheet::keepsWaiting(*this, *m_removalObserver)) {
        return;
    }
    m_state.quickLookURL = std::nullopt; // a sheet would lock the panel
    m_removalSheet = SweepPreviewSheet::present(m_library, *removal, this);
    connect(m_removalSheet, &QDialog::finished, this, &ContentView::endRemoval);
}

void ContentView::endRemoval() {
    m_removalSheet.clear();
    m_state.removal = std::nullopt;
}

OnboardingView* ContentView::onboarding() const {
    return m_onboarding;
}

// Two sheets never lie over each other: whichever is open, and the report of a put back that still runs, comes first.
bool ContentView::mayWelcome() {
    return isVisible() && !m_state.isPuttingBack.get() && !Sheet::keepsWaiting(*this, *m_onboardingObserver);
}

void ContentView::renderOnboarding() {
    if (!m_state.showOnboarding.get() || m_onboarding || !mayWelcome()) {
        return;
    }
    m_state.quickLookURL = std::nullopt; // a sheet would lock the panel
    m_onboarding = OnboardingView::present(m_library, this);
    connect(m_onboarding, &QDialog::finished, this, &ContentView::endOnboarding);
}

void ContentView::endOnboarding() {
    m_onboarding.clear();
    m_state.showOnboarding = false;
}

void ContentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    m_onboardingObserver->schedule(); // only over a window that has its place
    if (m_library.phase.get().kind == AppLibrary::Phase::Kind::idle) {
        m_library.refresh(AppLibrary::ScanReason::user);
    }
}

void ContentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_sidebar->setFixedWidth(width() < kNarrowWindow ? kSidebarNarrow : kSidebarWidth);
}

} // namespace quillane
