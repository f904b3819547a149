#include "Components/Look.h"
#include "Components/ProgressRing.h"
#include "Components/SegmentedControl.h"
#include "Components/Switch.h"
#include <QAbstractButton>
#include <QAccessible>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace quillane {
namespace {

class Controls : public ::testing::Test {
  protected:
    void SetUp() override { Look::setReducedMotion(true); }
    void TearDown() override { Look::setReducedMotion(false); }
};

TEST_F(Controls, ASwitchTogglesByClickAndBySpace) {
    Switch control("Weekly summary");
    control.show();
    QTest::mouseClick(&control, Qt::LeftButton);
    EXPECT_TRUE(control.isChecked());
    QTest::keyClick(&control, Qt::Key_Space);
    EXPECT_FALSE(control.isChecked());
}

TEST_F(Controls, ASwitchLooksDifferentOnAndOff) {
    Switch control("Weekly summary");
    control.show();
    const QImage off = control.grab().toImage();
    control.setChecked(true);
    EXPECT_NE(control.grab().toImage(), off);
    control.setChecked(false);
    EXPECT_EQ(control.grab().toImage(), off);
}

TEST_F(Controls, ASwitchReadsAsACheckBoxWithItsName) {
    Switch control("Weekly summary");
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&control);
    EXPECT_EQ(interface->text(QAccessible::Name), "Weekly summary");
    EXPECT_EQ(interface->role(), QAccessible::CheckBox);
    EXPECT_TRUE(interface->state().checkable);
}

TEST_F(Controls, OneSegmentIsAlwaysChosenAndAChangeIsToldOnce) {
    SegmentedControl control("Lens", {"Large & Old", "Screenshots", "Search"});
    EXPECT_EQ(control.currentIndex(), 0);
    QSignalSpy changed(&control, &SegmentedControl::currentChanged);
    control.setCurrentIndex(2);
    control.setCurrentIndex(2);
    control.setCurrentIndex(7);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toInt(), 2);
    EXPECT_EQ(control.currentIndex(), 2);
}

TEST_F(Controls, AssistiveToolsChooseASegmentByItsAction) {
    SegmentedControl control("Lens", {"Large & Old", "Screenshots", "Search"});
    const auto segments = control.findChildren<QAbstractButton*>();
    for (const int index : {2, 0, 1}) {
        auto* const met = QAccessible::queryAccessibleInterface(segments[index]);
        ASSERT_TRUE(
            met->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
        met->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(control.currentIndex(), index);
    }
}

TEST_F(Controls, AssistiveToolsTurnASwitchByItsAction) {
    Switch control("Weekly summary");
    QSignalSpy toggled(&control, &QAbstractButton::toggled);
    auto* const met = QAccessible::queryAccessibleInterface(&control);
    met->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(control.isChecked());
    EXPECT_EQ(toggled.size(), 1) << "which is what a screen listens to";
}

TEST_F(Controls, ArrowsMoveTheChoiceAndStopAtTheEnds) {
    SegmentedControl control("Lens", {"Large & Old", "Screenshots", "Search"});
    QTest::keyClick(&control, Qt::Key_Left);
    EXPECT_EQ(control.currentIndex(), 0);
    QTest::keyClick(&control, Qt::Key_Right);
    QTest::keyClick(&control, Qt::Key_Right);
    QTest::keyClick(&control, Qt::Key_Right);
    EXPECT_EQ(control.currentIndex(), 2);
}

TEST_F(Controls, ArrowsPressedOnAFocusedSegmentMoveFocusAndChoice) {
    SegmentedControl control("Lens", {"Large & Old", "Screenshots", "Search"});
    control.show();
    control.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&control));
    const auto segments = control.findChildren<QAbstractButton*>();
    segments[0]->setFocus(Qt::TabFocusReason);
    QTest::keyClick(segments[0], Qt::Key_Right);
    EXPECT_EQ(control.currentIndex(), 1);
    EXPECT_TRUE(segments[1]->hasFocus());
    QTest::keyClick(segments[1], Qt::Key_Left);
    EXPECT_EQ(control.currentIndex(), 0);
}

TEST_F(Controls, OnlyTheChosenSegmentIsAStopOfTab) {
    SegmentedControl control("Lens", {"Large & Old", "Screenshots", "Search"});
    control.setCurrentIndex(1);
    QList<bool> stops;
    for (const auto* button : control.findChildren<QAbstractButton*>()) {
        stops << ((button->focusPolicy() & Qt::TabFocus) == Qt::TabFocus);
    }
    EXPECT_EQ(stops, QList<bool>({false, true, false}));
}

TEST_F(Controls, ARingShowsItsValueAtOnceWithReducedMotion) {
    ProgressRing ring("sparkles");
    ring.setRange(0, 200);
    ring.show();
    ring.setValue(50);
    EXPECT_DOUBLE_EQ(ring.shownShare(), 0.25);
}

TEST_F(Controls, ARingEasesToItsValueOtherwise) {
    Look::setReducedMotion(false);
    ProgressRing ring("sparkles");
    ring.show();
    ring.setValue(50);
    auto* const ease = ring.findChild<QVariantAnimation*>();
    EXPECT_EQ(ease->state(), QAbstractAnimation::Running);
    ease->setCurrentTime(60);
    EXPECT_GT(ring.shownShare(), 0.25) << "it eases out: most of the way comes first";
    EXPECT_LT(ring.shownShare(), 0.5);
    ease->setCurrentTime(180);
    EXPECT_DOUBLE_EQ(ring.shownShare(), 0.5);
    EXPECT_EQ(ease->state(), QAbstractAnimation::Stopped);
}

} // namespace
} // namespace quillane
