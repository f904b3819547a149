#include "AppLibrary.h"
#include "Components/PushButton.h"
#include "Components/SidebarView.h"
#include "IconCache.h"
#include "NotificationCenter.h"
#include "Panes/DetailPane.h"
#include "Panes/SectionDetail.h"
#include "Review/PutBack.h"
#include "Review/SweepPreviewSheet.h"
#include "SamplePlatform.h"
#include "Shell/ContentView.h"
#include "Shell/Sidebar.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include "Welcomed.h"
#include <QApplication>
#include <QItemSelectionModel>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

using namespace quillane;

namespace {

SampleMac twoOfEach() {
    SampleMac mac;
    mac.usualFolders();
    mac.app("/Applications/Alder.app").identifier("org.alder.app").size(kilobytes(80));
    mac.app("/Applications/Birch.app").identifier("org.birch.app").size(kilobytes(40));
    mac.orphan("Library/Caches/com.cedar.app", "com.cedar.app", "com.cedar", kilobytes(80), daysAgo(400));
    mac.orphan("Library/Caches/com.drift.app", "com.drift.app", "com.drift", kilobytes(40), daysAgo(400));
    mac.location("Library/Developer/Xcode/DerivedData", "Xcode", "Derived data", true, kilobytes(80),
                 daysAgo(9));
    mac.location(".npm/_cacache", "npm", "Package cache", true, kilobytes(40), daysAgo(9));
    return mac;
}

// Where the keyboard is, in the window over a Mac that lies on disk. The section is one with a table and a pane.
class Keyboard : public testing::TestWithParam<LibrarySection> {
  protected:
    Keyboard() {
        IconCache::shared().attach(&sample.platform);
        window.showSection(GetParam());
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        finish();
        EXPECT_EQ(table().model()->rowCount(), 2);
        table().setFocus(Qt::TabFocusReason);
        table().selectionModel()->setCurrentIndex(
            table().model()->index(0, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        finish();
        EXPECT_NE(pane(), nullptr);
    }
    ~Keyboard() override { IconCache::shared().attach(nullptr); }

    void finish() {
        for (int i = 0; i < 3; ++i) {
            sample.runner.runAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        }
    }
    // Into what has the focus, as in front of the screen: a sheet that is open has it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        finish();
    }
    void pressNumberOf(LibrarySection section) {
        press(static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(section)), Qt::ControlModifier);
    }

    QWidget& content(LibrarySection section = GetParam()) const { return *window.content(section); }
    TableView& table(LibrarySection section = GetParam()) const {
        return *qobject_cast<SectionTable*>(&content(section))->table();
    }
    // The one for one row; null while another is shown.
    DetailPane* pane() const {
        return qobject_cast<DetailPane*>(
            qobject_cast<SectionDetail*>(window.detail(GetParam()))->currentWidget());
    }
    void goToTheButtonThatRemoves() { pane()->removeButton()->setFocus(Qt::TabFocusReason); }
    void removeFromThePane() {
        goToTheButtonThatRemoves();
        press(Qt::Key_Space);
        ASSERT_NE(window.removalSheet(), nullptr);
        press(Qt::Key_Return); // confirms
        ASSERT_NE(window.removalSheet(), nullptr);
        press(Qt::Key_Return); // "Done"
        ASSERT_EQ(window.removalSheet(), nullptr);
        ASSERT_EQ(table().model()->rowCount(), 1);
    }

    SamplePlatform sample{twoOfEach()};
    Welcomed welcomed{sample.defaults};
    AppLibrary library{sample.platform};
    NotificationCenter notifications;
    ContentView window{library, notifications};
};

} // namespace

TEST_P(Keyboard, ARemovalFromThePaneLeavesItToTheTable) {
    removeFromThePane();
    EXPECT_EQ(pane(), nullptr);
    EXPECT_TRUE(table().hasFocus()) << QApplication::focusWidget();
    press(Qt::Key_Home);
    EXPECT_TRUE(table().currentIndex().isValid()) << "arrows and the like move there";
}

TEST_P(Keyboard, AReviewThatIsCancelledGivesItBackToTheButton) {
    goToTheButtonThatRemoves();
    press(Qt::Key_Space);
    ASSERT_NE(window.removalSheet(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(window.removalSheet(), nullptr);
    EXPECT_TRUE(pane()->removeButton()->hasFocus());
}

TEST_P(Keyboard, PuttingBackByKeyNeverMovesItToTheButtonThatRemoves) {
    removeFromThePane();
    press(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_NE(window.putBack()->alert(), nullptr);
    press(Qt::Key_Return); // "OK"
    EXPECT_EQ(window.putBack()->alert(), nullptr);
    EXPECT_EQ(table().model()->rowCount(), 2);
    EXPECT_NE(pane(), nullptr) << "the row is back, and selected again";
    EXPECT_TRUE(table().hasFocus());
}

TEST_P(Keyboard, TheNumberOfASectionTakesItFromThePaneToWhatTheSectionShows) {
    for (const auto& screen : standingScreens()) {
        pressNumberOf(GetParam());
        goToTheButtonThatRemoves();
        pressNumberOf(screen.section);
        EXPECT_EQ(window.state().section.get(), screen.section);
        EXPECT_TRUE(content(screen.section).hasFocus()) << rawValue(screen.section);
        EXPECT_TRUE(window.testAttribute(Qt::WA_KeyboardFocusChange)) << "and shows where it is";
    }
}

TEST_P(Keyboard, TheNumberOfASectionTakesItFromTheSidebarToo) {
    window.sidebar()->list()->setFocus();
    pressNumberOf(GetParam());
    EXPECT_TRUE(table().hasFocus());
}

TEST_P(Keyboard, ASectionThatComesByNotificationTakesItFromThePaneOnly) {
    const auto other =
        GetParam() == LibrarySection::developer ? LibrarySection::orphans : LibrarySection::developer;
    table(other).selectAll(); // so that its pane has a button
    finish();
    goToTheButtonThatRemoves();
    notifications.post(NotificationName::kShowSection, std::string(rawValue(other)));
    finish();
    EXPECT_TRUE(content(other).hasFocus());
    window.sidebar()->list()->setFocus();
    notifications.post(NotificationName::kShowSection, std::string(rawValue(GetParam())));
    finish();
    EXPECT_TRUE(window.sidebar()->list()->hasFocus());
}

TEST_P(Keyboard, APaneForSeveralThatComesLeavesItToTheTable) {
    goToTheButtonThatRemoves();
    table().selectAll();
    finish();
    EXPECT_EQ(pane(), nullptr);
    EXPECT_TRUE(table().hasFocus());
}

TEST_P(Keyboard, APaneThatComesLeavesItWhereItIs) {
    goToTheButtonThatRemoves(); // what the pane had last
    window.sidebar()->list()->setFocus();
    table().clearSelection();
    finish();
    EXPECT_TRUE(window.sidebar()->list()->hasFocus());
    table().selectAll();
    finish();
    EXPECT_TRUE(window.sidebar()->list()->hasFocus());
}

INSTANTIATE_TEST_SUITE_P(Sections, Keyboard,
                         testing::Values(LibrarySection::applications, LibrarySection::orphans,
                                         LibrarySection::developer));
