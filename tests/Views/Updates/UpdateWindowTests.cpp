#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "OpenedPages.h"
#include "Updates/UpdateWindow.h"
#include "Updates/UpdateWindows.h"
#include "WindowPicture.h"
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace quillane;
using Asked = UpdatePresenter::Asked;
using Failure = UpdatePresenter::Failure;
using Stage = UpdateWindow::Stage;

namespace {

const auto kInstalled = *VersionNumber::parse("1.2");
const std::string kPage = "https://example.org/download?version=1.10";

AppUpdate update(const std::string& notes = "Scans are faster.\nThe Trash is measured right away.") {
    return {*VersionNumber::parse("1.10"), Date::fromUnix(1'795'343'405), kPage, notes};
}

std::string longNotes() {
    std::string notes;
    for (int i = 0; i < 40; ++i) {
        notes += "• One thing that is better now, told in a line that may be as long as this one is.\n";
    }
    return notes;
}

class UpdateWindowTest : public testing::Test {
  protected:
    ~UpdateWindowTest() override { Look::setDark(false); }

    UpdateWindow& window() const { return *m_windows.window(); }
    void showUpdate(Asked asked = Asked::byPerson) { m_windows.showUpdate(update(), kInstalled, asked); }
    // Until the window that was closed has gone.
    static void settle() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    void expectClosed() const {
        settle();
        EXPECT_EQ(m_windows.window(), nullptr);
    }
    QString accessibleName(QWidget* widget) const {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }
    bool keep(const char* name) {
        QCoreApplication::processEvents();
        bool isKept = keepPicture(pictureOf(window()), QString("updates-%1").arg(name));
        Look::setDark(true);
        QCoreApplication::processEvents();
        isKept = keepPicture(pictureOf(window()), QString("updates-%1-dark").arg(name)) && isKept;
        Look::setDark(false);
        return isKept;
    }

    OpenedPages m_pages;
    UpdateWindows m_windows;
};

} // namespace

TEST_F(UpdateWindowTest, TellsTheVersionTheDayAndWhatIsNew) {
    showUpdate();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().title()->text(), "Quillane 1.10 Is Available");
    EXPECT_EQ(window().sentence()->text(),
              "You have version 1.2. The new one was announced on November 22, 2026.");
    EXPECT_EQ(window().notes()->toPlainText(), "Scans are faster.\nThe Trash is measured right away.");
    EXPECT_TRUE(window().notes()->isReadOnly());
    EXPECT_EQ(window().mainButton()->label(), "Open Download Page");
    EXPECT_EQ(window().otherButton()->label(), "Not Now");
    EXPECT_TRUE(keep("news"));
}

TEST_F(UpdateWindowTest, OpensThePageAndCloses) {
    showUpdate();
    QTest::mouseClick(window().mainButton(), Qt::LeftButton);
    ASSERT_EQ(m_pages.urls.size(), 1U);
    EXPECT_EQ(m_pages.urls[0], QUrl(QString::fromStdString(kPage)));
    expectClosed();
}

TEST_F(UpdateWindowTest, OpensNothingButHttps) {
    for (const char* page : {"http://example.org/", "file:///etc/hostname", "javascript:0", ""}) {
        auto other = update();
        other.page = page;
        m_windows.showUpdate(other, kInstalled, Asked::byPerson);
        QTest::mouseClick(window().mainButton(), Qt::LeftButton);
        settle();
    }
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, NotNowAndEscapeOpenNothing) {
    showUpdate();
    QTest::mouseClick(window().otherButton(), Qt::LeftButton);
    expectClosed();
    showUpdate();
    QTest::keyClick(&window(), Qt::Key_Escape);
    expectClosed();
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, NotesArePlainText) {
    m_windows.showUpdate(update("<a href=\"https://evil.example\">Click</a> & <b>more</b>"), kInstalled,
                         Asked::byPerson);
    EXPECT_EQ(window().notes()->toPlainText(), "<a href=\"https://evil.example\">Click</a> & <b>more</b>");
    EXPECT_TRUE(window().notes()->isVisible());
}

TEST_F(UpdateWindowTest, WithoutNotesThereIsNoRoomForThem) {
    showUpdate();
    const int height = window().height();
    m_windows.showUpdate(update(""), kInstalled, Asked::byPerson);
    EXPECT_FALSE(window().notes()->isVisible());
    EXPECT_LT(window().height(), height);
    EXPECT_TRUE(keep("without-notes"));
}

TEST_F(UpdateWindowTest, LongNotesScroll) {
    m_windows.showUpdate(update(longNotes()), kInstalled, Asked::byPerson);
    QCoreApplication::processEvents();
    EXPECT_GT(window().notes()->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(window().notes()->horizontalScrollBar()->maximum(), 0);
    EXPECT_TRUE(keep("long-notes"));
}

TEST_F(UpdateWindowTest, TheKeyboardReachesNotesAndButtons) {
    showUpdate();
    QApplication::setActiveWindow(&window());
    EXPECT_EQ(window().focusWidget(), window().otherButton());
    std::vector<QWidget*> reached;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
        reached.push_back(window().focusWidget());
        if (window().notes()->hasFocus()) {
            EXPECT_TRUE(keep("keyboard-in-notes"));
        }
    }
    const std::vector<QWidget*> expected = {window().mainButton(), window().notes(), window().otherButton()};
    EXPECT_EQ(reached, expected);
    window().mainButton()->setFocus();
    QTest::keyClick(window().focusWidget(), Qt::Key_Space);
    EXPECT_EQ(m_pages.urls.size(), 1U);
}

TEST_F(UpdateWindowTest, AKeyMeantForCancelOpensNoPageWhenTheAnswerComesBeforeIt) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        m_windows.showChecking([] {});
        QApplication::setActiveWindow(&window());
        EXPECT_EQ(window().focusWidget(), window().otherButton());
        showUpdate();
        EXPECT_EQ(window().focusWidget(), window().otherButton());
        EXPECT_TRUE(window().otherButton()->isDefault());
        QTest::keyClick(window().focusWidget(), key);
        expectClosed();
    }
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, AKeyMeantForOKOpensNoPageWhenNewsComeUnaskedBeforeIt) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        m_windows.showUpToDate(kInstalled);
        QApplication::setActiveWindow(&window());
        EXPECT_EQ(window().focusWidget(), window().mainButton());
        showUpdate(Asked::byItself);
        QTest::keyClick(window().focusWidget(), key);
        expectClosed();
    }
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, AReturnInAWindowThatNobodyAskedForOpensNoPage) {
    showUpdate(Asked::byItself);
    QTest::keyClick(&window(), Qt::Key_Return);
    expectClosed();
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, LaterNewsLeaveTheFocusWhereThePersonHasPutIt) {
    showUpdate();
    QApplication::setActiveWindow(&window());
    for (QWidget* widget :
         {static_cast<QWidget*>(window().notes()), static_cast<QWidget*>(window().mainButton()),
          static_cast<QWidget*>(window().otherButton())}) {
        widget->setFocus();
        showUpdate(Asked::byItself);
        EXPECT_EQ(window().focusWidget(), widget);
    }
    window().notes()->setFocus();
    m_windows.showUpdate(update(""), kInstalled, Asked::byItself);
    EXPECT_EQ(window().focusWidget(), window().otherButton()) << "where there are no notes any more";
}

TEST_F(UpdateWindowTest, ACheckThatRunsCanBeCancelledInEachWay) {
    int cancels = 0;
    const auto begin = [&] { m_windows.showChecking([&] { ++cancels; }); };
    begin();
    EXPECT_EQ(window().title()->text(), "Checking for Updates");
    EXPECT_FALSE(window().mainButton()->isVisible());
    EXPECT_TRUE(keep("checking"));
    QTest::mouseClick(window().otherButton(), Qt::LeftButton);
    EXPECT_EQ(cancels, 1);
    expectClosed();
    begin();
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_EQ(cancels, 2);
    settle();
    begin();
    window().close();
    EXPECT_EQ(cancels, 3);
    expectClosed();
}

TEST_F(UpdateWindowTest, ACheckThatHasEndedIsNotCancelled) {
    int cancels = 0;
    m_windows.showChecking([&] { ++cancels; });
    m_windows.showUpToDate(kInstalled);
    QTest::keyClick(&window(), Qt::Key_Escape);
    expectClosed();
    EXPECT_EQ(cancels, 0);
}

TEST_F(UpdateWindowTest, TellsThatThereIsNothingNewer) {
    showUpdate();
    m_windows.showUpToDate(kInstalled);
    EXPECT_EQ(window().title()->text(), "You Have the Newest Version");
    EXPECT_EQ(window().sentence()->text(), "Nothing newer than Quillane 1.2 was announced.");
    EXPECT_EQ(window().mainButton()->label(), "OK");
    EXPECT_FALSE(window().otherButton()->isVisible());
    EXPECT_FALSE(window().notes()->isVisible());
    EXPECT_TRUE(keep("up-to-date"));
    QTest::keyClick(&window(), Qt::Key_Return);
    expectClosed();
    EXPECT_TRUE(m_pages.urls.empty());
}

TEST_F(UpdateWindowTest, TellsEachFailureInItsOwnWords) {
    QStringList sentences;
    for (const auto failure :
         {Failure::unreachable, Failure::notSigned, Failure::unreadable, Failure::outdated}) {
        m_windows.showFailure(failure);
        EXPECT_EQ(window().title()->text(), "Update Check Failed");
        EXPECT_EQ(window().mainButton()->label(), "OK");
        EXPECT_FALSE(window().sentence()->text().isEmpty());
        sentences << window().sentence()->text();
    }
    EXPECT_EQ(sentences.removeDuplicates(), 0);
    EXPECT_TRUE(keep("failure"));
}

TEST_F(UpdateWindowTest, ThereIsOneWindowAtMost) {
    showUpdate();
    auto* const first = &window();
    m_windows.showFailure(Failure::unreachable);
    showUpdate(Asked::byItself);
    EXPECT_EQ(&window(), first);
    EXPECT_EQ(window().stage(), Stage::update);
}

TEST_F(UpdateWindowTest, WhatTheProgramFoundByItselfTakesTheKeyboardFromNobody) {
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    showUpdate(Asked::byItself);
    EXPECT_TRUE(window().isVisible());
    // No more can be seen without a desktop.
    EXPECT_TRUE(window().testAttribute(Qt::WA_ShowWithoutActivating));
    showUpdate(Asked::byPerson);
    EXPECT_FALSE(window().testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
}

TEST_F(UpdateWindowTest, NewsThatComeUnaskedLeaveAWindowThatIsOpenBehindWhereItIs) {
    m_windows.showUpToDate(kInstalled);
    QLineEdit other;
    other.show();
    QApplication::setActiveWindow(&other);
    other.setFocus();
    showUpdate(Asked::byItself);
    EXPECT_EQ(window().stage(), Stage::update);
    QCoreApplication::processEvents(); // what takes the keyboard takes it then
    EXPECT_EQ(QApplication::activeWindow(), &other);
    EXPECT_EQ(QApplication::focusWidget(), &other);
}

TEST_F(UpdateWindowTest, AssistiveToolsAreToldWhatHasBeenFound) {
    m_windows.showChecking([] {});
    EXPECT_EQ(accessibleName(&window()), "Checking for Updates. Asking which version is the newest…");
    showUpdate();
    EXPECT_TRUE(accessibleName(&window()).startsWith("Quillane 1.10 Is Available. You have version 1.2."));
    EXPECT_EQ(accessibleName(window().notes()), "What Is New");
    EXPECT_EQ(accessibleName(window().mainButton()), "Open Download Page");
}

TEST_F(UpdateWindowTest, LargerTextHasRoom) {
    showUpdate();
    const auto usual = window().size();
    Look::setTextScale(1.5);
    EXPECT_GT(window().height(), usual.height());
    EXPECT_TRUE(keep("large-text"));
    Look::setTextScale(1);
    EXPECT_EQ(window().size(), usual);
}
