#pragma once
#include "Components/Sheet.h"
#include "Onboarding/Slide.h"

class QBoxLayout;
class QScrollArea;

namespace quillane {

class AppLibrary;
class PageDots;
class PushButton;
class SlideDeck;
class SlideView;

// The welcome: what the program does and the one permission that it needs, on five pages. It changes nothing on
// disk. "Skip" and "Get Started" record that it is done and close it; a close by the window manager does not
// record it, and Escape does not close it.
class OnboardingView : public Sheet {
    Q_OBJECT
  public:
    // At the usual text size.
    static constexpr QSize kSize{680, 500};

    // `over` is any widget of the window that the sheet belongs to. The library outlives the sheet.
    explicit OnboardingView(AppLibrary& library, QWidget* over = nullptr);
    // Opens it; it deletes itself when it closes.
    static OnboardingView* present(AppLibrary& library, QWidget* over);

    int page() const { return m_page; } // from 0
    // Which way the last page was turned.
    bool goingForward() const { return m_goingForward; }
    static const std::vector<Slide>& pages() { return welcomeSlides(); }

    // Turn a page; without effect where there is none.
    void goForward();
    void goBack();

    SlideDeck* deck() const { return m_deck; }
    SlideView* slide() const; // of the current page
    PushButton* skipButton() const { return m_skip; }
    PageDots* dots() const { return m_dots; }
    PushButton* backButton() const { return m_back; }
    PushButton* grantButton() const { return m_grant; }
    PushButton* mainButton() const { return m_main; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void makeSlides();
    QWidget* makeControls();
    void connectControls();
    bool isLast() const;
    void turnTo(int page, bool forward);
    void renderControls();
    void tellPage();
    void finish();
    bool turnOrScroll(int key);
    bool scroll(int key);

    AppLibrary& m_library;
    int m_page = 0;
    bool m_goingForward = true;
    SlideDeck* m_deck;
    QScrollArea* m_scroll;
    PushButton* m_skip;
    PageDots* m_dots;
    PushButton* m_back;
    PushButton* m_grant;
    PushButton* m_main;
};

} // namespace quillane
