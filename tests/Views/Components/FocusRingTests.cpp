#include "Components/FocusRing.h"
#include "Components/PushButton.h"
#include "Components/SidebarView.h"
#include "Gallery.h"
#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class FocusRingTest : public ::testing::Test {
  protected:
    void SetUp() override {
        auto* row = new QHBoxLayout(&m_window);
        row->setContentsMargins(20, 20, 20, 20);
        row->addWidget(&m_first);
        row->addWidget(&m_second);
        row->addWidget(&m_box);
        row->addWidget(&m_field);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        QTest::mouseClick(&m_first, Qt::LeftButton);
        m_first.setFocus(Qt::MouseFocusReason);
    }

    static const FocusRing* ring() { return qApp->findChild<FocusRing*>(); }

    QWidget m_window;
    PushButton m_first{"Cancel"};
    PushButton m_second{"Review"};
    QCheckBox m_box{"Include"};
    QLineEdit m_field;
};

TEST_F(FocusRingTest, AClickShowsNoRing) {
    ASSERT_TRUE(m_first.hasFocus());
    EXPECT_FALSE(FocusRing::isShownFor(&m_first));
    EXPECT_EQ(ring()->target(), nullptr);
}

TEST_F(FocusRingTest, TabShowsTheRingRoundTheNextControl) {
    QTest::keyClick(&m_first, Qt::Key_Tab);
    ASSERT_TRUE(m_second.hasFocus());
    EXPECT_TRUE(FocusRing::isShownFor(&m_second));
    EXPECT_EQ(ring()->target(), &m_second);
    QTest::keyClick(&m_second, Qt::Key_Tab);
    EXPECT_EQ(ring()->target(), &m_box);
}

TEST_F(FocusRingTest, TheRingIsDrawnOutsideTheControl) {
    const QImage before = drawn(m_window);
    QTest::keyClick(&m_first, Qt::Key_Tab);
    QCoreApplication::processEvents();
    const QImage after = drawn(m_window);
    const QPoint outside = m_second.geometry().topLeft() + QPoint(m_second.width() / 2, -2);
    EXPECT_NE(before.pixelColor(outside * 2), after.pixelColor(outside * 2));
}

TEST_F(FocusRingTest, TheNextClickTakesTheRingAway) {
    QTest::keyClick(&m_first, Qt::Key_Tab);
    ASSERT_EQ(ring()->target(), &m_second);
    QTest::mouseClick(&m_second, Qt::LeftButton);
    EXPECT_EQ(ring()->target(), nullptr);
    EXPECT_FALSE(FocusRing::isShownFor(&m_second));
}

TEST_F(FocusRingTest, AShortcutThatMovesTheFocusCountsAsKeyboard) {
    m_second.setFocus(Qt::ShortcutFocusReason);
    EXPECT_EQ(ring()->target(), &m_second);
}

TEST_F(FocusRingTest, AnArrowInAListCountsAsKeyboardUntilTheNextClick) {
    auto* const list = new QListWidget;
    list->addItems({"Ash", "Beech", "Cedar"});
    m_window.layout()->addWidget(list);
    list->show();
    list->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(list, Qt::Key_B);
    EXPECT_FALSE(FocusRing::isShownFor(list)) << "a letter takes the row that it finds";
    QTest::keyClick(list, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_TRUE(FocusRing::isShownFor(list));
    QTest::mouseClick(list->viewport(), Qt::LeftButton);
    EXPECT_FALSE(FocusRing::isShownFor(list));
}

TEST_F(FocusRingTest, ATextFieldWearsTheRingAfterAClickToo) {
    QTest::mouseClick(&m_field, Qt::LeftButton);
    ASSERT_TRUE(m_field.hasFocus());
    EXPECT_EQ(ring()->target(), &m_field);
}

TEST_F(FocusRingTest, TheRingGoesWithItsControl) {
    auto* passing = new PushButton("Passing");
    m_window.layout()->addWidget(passing);
    passing->show();
    passing->setFocus(Qt::TabFocusReason);
    ASSERT_EQ(ring()->target(), passing);
    delete passing;
    EXPECT_TRUE(ring()->target() == nullptr || ring()->target()->hasFocus());
}

} // namespace
} // namespace quillane
