#pragma once
#include "NotificationCenter.h"
#include "Shell/StandingScreens.h"
#include "State/ContentState.h"
#include <QPointer>
#include <QWidget>
#include <vector>

class QSplitter;
class QStackedWidget;

namespace quillane {

class AccessBanner;
class AppLibrary;
class ColumnGround;
class LibraryObserver;
class OnboardingView;
class PutBack;
class QuickLookPanel;
class Scenes;
class SearchField;
class Sidebar;
class SweepPreviewSheet;
class SystemQuickLook;
class ToolbarRow;

// The main screen: the sidebar, the section in the middle and its pane at the right. It starts the first scan
// when it is shown before any scan has run.
class ContentView : public QWidget {
    Q_OBJECT
  public:
    // All of them outlive the window. Without scenes it has no way to the other windows of the program.
    ContentView(AppLibrary& library, NotificationCenter& notifications, Scenes* scenes = nullptr,
                QWidget* parent = nullptr);
    ~ContentView() override;

    static constexpr QSize kDefaultSize{1280, 760};
    static constexpr QSize kMinimumSize{1120, 600};
    static constexpr int kDetailNarrowest = 348;
    static constexpr int kDetailWidest = 460;

    AppLibrary& library() { return m_library; }
    ContentState& state() { return m_state; }
    Sidebar* sidebar() const { return m_sidebar; }
    SearchField* searchField() const { return m_search; }
    ToolbarRow* header() const { return m_header; }
    AccessBanner* accessBanner() const { return m_banner; }
    QSplitter* columns() const { return m_columns; }
    // What the section shows; null for a section that the window does not have.
    QWidget* content(LibrarySection section) const;
    QWidget* detail(LibrarySection section) const;

    // Goes to the section; one that the window does not have is ignored.
    void showSection(LibrarySection section);
    // The same at once, and the keyboard goes to what the section shows, also when the window was there already.
    void enterSection(LibrarySection section);

    // Opens the review sheet for a request. Nothing opens for a request without rows, while another review is
    // open, and while a sweep runs: the request is dropped then. One that comes during the welcome, or under the
    // report of a put back, waits for its end.
    void presentRemoval(BulkRemoval removal);
    // Null while no review is open.
    SweepPreviewSheet* removalSheet() const;
    // Null while the welcome is not up. It waits until the window is shown and no other sheet lies over it.
    OnboardingView* onboarding() const;
    // Open while a file is looked at, and hidden otherwise.
    // Null where the system has a panel of its own.
    QuickLookPanel* quickLook() const { return m_quickLook; }
    PutBack* putBack() const { return m_state.putBack; }

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* listToMoveIn() const;
    void makeQuickLook();
    void makeScreens();
    void makeColumns();
    void makeCommands();
    void bindSearch();
    void receive(const NotificationCenter::Object& title);
    void renderSection();
    void renderRemoval();
    void endRemoval();
    bool mayWelcome();
    void renderOnboarding();
    void endOnboarding();
    void renderBanner();
    void announceScan();
    void noticeActivation();
    int indexOf(LibrarySection section) const; // into m_screens; -1 for none

    AppLibrary& m_library;
    ContentState m_state;
    std::vector<Screen> m_screens; // in the order of standingScreens()
    Sidebar* m_sidebar = nullptr;
    ToolbarRow* m_header = nullptr;
    SearchField* m_search = nullptr;
    ColumnGround* m_middle = nullptr;
    AccessBanner* m_banner = nullptr;
    QSplitter* m_columns = nullptr;
    QStackedWidget* m_sections = nullptr;
    QStackedWidget* m_details = nullptr;
    LibraryObserver* m_sectionObserver = nullptr;
    LibraryObserver* m_searchObserver = nullptr;
    LibraryObserver* m_removalObserver = nullptr;
    QPointer<SweepPreviewSheet> m_removalSheet;
    LibraryObserver* m_onboardingObserver = nullptr;
    QPointer<OnboardingView> m_onboarding;
    LibraryObserver* m_bannerObserver = nullptr;
    LibraryObserver* m_scanObserver = nullptr;
    bool m_isScanning = false;
    QuickLookPanel* m_quickLook = nullptr; // one of these two
    SystemQuickLook* m_systemQuickLook = nullptr;
    NotificationCenter::Subscription m_showSection;
    NotificationCenter::Subscription m_showOverview;
    NotificationCenter::Subscription m_showOnboarding;
};

} // namespace quillane
