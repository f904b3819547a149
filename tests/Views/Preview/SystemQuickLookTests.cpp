#include "FakePreviewPanel.h"
#include "Preview/SystemQuickLook.h"
#include "WindowTest.h"

using namespace quillane;
using Key = PreviewPanel::Key;

namespace {

// The window on a system with a panel of its own, over three applications.
class QuickLookOfTheSystem : public WindowTest {
  protected:
    void SetUp() override {
        systemPanel.isInSystem = true;
        openReady({measuredApp("Alder", 3'000'000), measuredApp("Beech", 2'000'000),
                   measuredApp("Cedar", 1'000'000)});
        click("Alder");
        turn();
    }
    void set(const std::optional<FileURL>& url) {
        window->state().quickLookURL = url;
        turn();
    }
    bool isLooking() const { return window->state().quickLookURL.get().has_value(); }

    const FileURL m_beach{"/Users/alex/Beach.png"};
    const FileURL m_lake{"/Users/alex/Lake.png"};
};

} // namespace

TEST_F(QuickLookOfTheSystem, TakesThePlaceOfOurOwnPanel) {
    EXPECT_EQ(window->quickLook(), nullptr);
    EXPECT_TRUE(systemPanel.hasHandlers());
}

TEST_F(QuickLookOfTheSystem, ShowsTheFileWhileItIsLookedAtAndKnowsTheWindow) {
    EXPECT_FALSE(systemPanel.isShown());
    set(m_beach);
    EXPECT_EQ(systemPanel.file, m_beach);
    EXPECT_EQ(systemPanel.window, window->winId());
    set(m_lake);
    EXPECT_EQ(systemPanel.file, m_lake);
    set(std::nullopt);
    EXPECT_FALSE(systemPanel.isShown());
}

TEST_F(QuickLookOfTheSystem, IsAskedOnceForEachFile) {
    set(m_beach);
    window->state().quickLookURL = m_beach;
    turn();
    EXPECT_EQ(systemPanel.shown, std::vector{m_beach});
}

TEST_F(QuickLookOfTheSystem, ClosingThePanelEmptiesTheState) {
    set(m_beach);
    systemPanel.close();
    turn();
    EXPECT_FALSE(isLooking());
    set(m_beach);
    EXPECT_EQ(systemPanel.file, m_beach) << "it opens again";
}

TEST_F(QuickLookOfTheSystem, AClosingThatNobodyTellsOfIsNoticedWhenTheWindowComesToTheFront) {
    set(m_beach);
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window.get(), &activate);
    turn();
    EXPECT_TRUE(isLooking()) << "who comes back to the window beside the panel closes nothing";
    systemPanel.close(true);
    QCoreApplication::sendEvent(window.get(), &activate);
    turn();
    EXPECT_FALSE(isLooking());
}

TEST_F(QuickLookOfTheSystem, AnotherSectionEndsTheLook) {
    set(m_beach);
    window->showSection(LibrarySection::overview);
    turn();
    EXPECT_FALSE(isLooking());
    EXPECT_FALSE(systemPanel.isShown());
}

TEST_F(QuickLookOfTheSystem, TheWindowsEndIsThePanelsEnd) {
    set(m_beach);
    window->hide();
    turn();
    EXPECT_FALSE(isLooking());
    EXPECT_FALSE(systemPanel.isShown());
}

TEST_F(QuickLookOfTheSystem, AWindowThatGoesClosesThePanelAndHearsOfItNoMore) {
    set(m_beach);
    close();
    EXPECT_FALSE(systemPanel.isShown());
    EXPECT_FALSE(systemPanel.hasHandlers());
}

TEST_F(QuickLookOfTheSystem, KeysThatMoveInAListGoToTheListBehindIt) {
    set(m_beach);
    EXPECT_TRUE(systemPanel.press(Key::down));
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Beech"}));
    systemPanel.press(Key::end);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Cedar"}));
    systemPanel.press(Key::up, true);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Beech", "Cedar"}));
    systemPanel.press(Key::home);
    turn();
    EXPECT_EQ(selectedNames(), QStringList({"Alder"}));
}

TEST_F(QuickLookOfTheSystem, WithoutAListBehindItEachKeyIsThePanelsOwn) {
    FakePreviewPanel other;
    const SystemQuickLook quickLook(other, window->state(), *window, []() -> QWidget* { return nullptr; });
    set(m_beach);
    ASSERT_TRUE(other.isShown());
    EXPECT_FALSE(other.press(Key::down));
}
