#include "Components/ProtectedMark.h"
#include "Duplicates/CopiesDelegate.h"
#include "Duplicates/CopiesList.h"
#include "ToolTip.h"
#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>
#include <string>
#include <utility>

using namespace quillane;
using Part = CopiesList::Part;

namespace {

class CopiesListTest : public testing::Test {
  protected:
    CopiesListTest() {
        QObject::connect(&list, &CopiesList::chosen, &list,
                         [this](const FileURL& copy) { told << "keep " + nameOf(copy); });
        QObject::connect(&list, &CopiesList::lookWanted, &list,
                         [this](const FileURL& copy) { told << "look " + nameOf(copy); });
        QObject::connect(&list, &CopiesList::wentTo, &list,
                         [this](const FileURL& copy) { goneTo << nameOf(copy); });
        list.setRows({rowAt("a", true), rowAt("b"), rowAt("c")});
        list.resize(300, list.sizeHint().height());
        list.show();
        list.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&list));
        list.setFocus(Qt::TabFocusReason);
    }
    static QString nameOf(const FileURL& url) { return QString::fromUtf8(url.lastPathComponent().data()); }
    static CopiesList::Row rowAt(const std::string& name, bool isChosen = false) {
        return {.url = FileURL("/" + name),
                .folder = "~/" + QString::fromStdString(name),
                .opened = "Opened yesterday",
                .name = {},
                .isChosen = isChosen};
    }
    QModelIndex row(int number) const { return list.model()->index(number, 0); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&list, key, modifiers); }
    QPoint at(int number, Part part) const {
        return part == Part::Look ? list.placeOf(row(number), part).center()
                                  : list.placeOf(row(number), part).topLeft() + QPoint(30, 10);
    }
    QAccessibleInterface* met() { return QAccessible::queryAccessibleInterface(&list); }
    static QStringList actions(QAccessibleInterface* of) { return of->actionInterface()->actionNames(); }
    static void act(QAccessibleInterface* on, const QString& action) {
        on->actionInterface()->doAction(action);
    }

    CopiesList list{"Copies"};
    QStringList told;
    QStringList goneTo;
};

} // namespace

// Keys

TEST_F(CopiesListTest, ArrowsGoFromRowToRowAndChooseNothing) {
    EXPECT_EQ(list.currentIndex(), row(0));
    key(Qt::Key_Down);
    EXPECT_EQ(list.currentIndex(), row(1));
    key(Qt::Key_End);
    EXPECT_EQ(list.currentIndex(), row(2));
    key(Qt::Key_Home);
    EXPECT_EQ(list.currentIndex(), row(0));
    EXPECT_EQ(told, QStringList());
}

TEST_F(CopiesListTest, ItIsToldWhereKeysHaveGoneAndNothingOfWhereTheMouseHas) {
    key(Qt::Key_Down);
    key(Qt::Key_End);
    key(Qt::Key_End);
    key(Qt::Key_Right);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at(0, Part::Choice));
    list.setRows({rowAt("b"), rowAt("c", true)});
    EXPECT_EQ(goneTo, QStringList({"b", "c"}));
}

TEST_F(CopiesListTest, SpaceAndReturnChooseTheRow) {
    key(Qt::Key_Down);
    key(Qt::Key_Space);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(told, QStringList({"keep b", "keep c", "keep c"}));
}

TEST_F(CopiesListTest, AKeyWithAModifierPressesNothing) {
    key(Qt::Key_Return, Qt::ControlModifier);
    key(Qt::Key_Space, Qt::AltModifier);
    EXPECT_EQ(told, QStringList());
}

TEST_F(CopiesListTest, RightGoesToTheButtonThatLooksAndLeftBack) {
    key(Qt::Key_Right);
    EXPECT_EQ(list.part(), Part::Look);
    EXPECT_EQ(list.currentIndex(), row(0));
    key(Qt::Key_Space);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    key(Qt::Key_Left);
    EXPECT_EQ(list.part(), Part::Choice);
    key(Qt::Key_Space);
    EXPECT_EQ(told, QStringList({"look a", "look b", "keep b"}));
}

TEST_F(CopiesListTest, WithoutRowsTheKeysDoNothing) {
    list.setRows({});
    for (const auto pressed : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return, Qt::Key_End}) {
        key(pressed);
    }
    EXPECT_EQ(told, QStringList());
}

// The mouse

TEST_F(CopiesListTest, AClickOnARowChoosesItAndOneOnItsButtonLooks) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at(2, Part::Choice));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at(1, Part::Look));
    EXPECT_EQ(told, QStringList({"keep c", "look b"}));
    EXPECT_EQ(list.currentIndex(), row(1));
}

TEST_F(CopiesListTest, WhatIsLetGoElsewhereIsNotPressed) {
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at(1, Part::Look));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, at(1, Part::Choice));
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at(1, Part::Choice));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, at(2, Part::Choice));
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, at(1, Part::Choice));
    EXPECT_EQ(told, QStringList());
}

TEST_F(CopiesListTest, AButtonIsLargeEnoughToHit) {
    const QRect button = list.placeOf(row(1), Part::Look);
    EXPECT_GE(button.width(), 26);
    EXPECT_GE(button.height(), 26);
    EXPECT_TRUE(list.placeOf(row(1), Part::Choice).contains(button));
}

TEST_F(CopiesListTest, TheButtonAndTheMarkTellWhatTheyAre) {
    auto marked = rowAt("a");
    marked.isProtected = true;
    list.setRows({marked, rowAt("b")});
    const auto helpAt = [this](const QPoint& place) {
        QToolTip::hideText();
        QHelpEvent asked(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &asked);
        return readIn(QToolTip::text());
    };
    EXPECT_EQ(helpAt(at(0, Part::Look)), "Quick Look");
    EXPECT_EQ(helpAt(CopiesDelegate::markOf(list.visualRect(row(0))).center()), ProtectedMark::helpText());
    EXPECT_EQ(helpAt(CopiesDelegate::markOf(list.visualRect(row(1))).center()), "/b") << "no mark there";
    EXPECT_EQ(helpAt(at(0, Part::Choice)), "/a");
}

// The model

TEST_F(CopiesListTest, TheModelKeepsWhatAModelPromises) {
    const QAbstractItemModelTester tester(list.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    list.setRows({rowAt("c", true), rowAt("a"), rowAt("d")});
    EXPECT_EQ(row(0).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(row(1).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    list.setRows({});
    EXPECT_EQ(list.sizeHint().height(), 0);
}

TEST_F(CopiesListTest, TheKeyboardStaysOnItsCopyWhenOthersGo) {
    key(Qt::Key_End);
    key(Qt::Key_Right);
    list.setRows({rowAt("a", true), rowAt("c")});
    EXPECT_EQ(list.currentIndex(), row(1));
    EXPECT_EQ(list.part(), Part::Look);
    key(Qt::Key_Space);
    EXPECT_EQ(told, QStringList({"look c"}));
}

// Assistive tools

TEST_F(CopiesListTest, AssistiveToolsMeetRadioButtonsThatEachHoldAButton) {
    ASSERT_EQ(met()->role(), QAccessible::List);
    EXPECT_EQ(met()->text(QAccessible::Name), "Copies");
    ASSERT_EQ(met()->childCount(), 3);
    for (int i = 0; i < 3; ++i) {
        auto* const choice = met()->child(i);
        EXPECT_EQ(choice->role(), QAccessible::RadioButton);
        EXPECT_EQ(choice->parent(), met());
        EXPECT_EQ(met()->indexOfChild(choice), i);
        EXPECT_TRUE(choice->state().checkable);
        EXPECT_EQ(choice->state().checked, i == 0);
        ASSERT_EQ(choice->childCount(), 1);
        auto* const look = choice->child(0);
        EXPECT_EQ(look->role(), QAccessible::Button);
        EXPECT_EQ(look->text(QAccessible::Name), "Quick Look");
        EXPECT_EQ(look->parent(), choice);
        EXPECT_EQ(choice->indexOfChild(look), 0);
        EXPECT_EQ(met()->indexOfChild(look), -1);
        EXPECT_FALSE(look->state().checkable);
        EXPECT_TRUE(choice->rect().contains(look->rect()));
        EXPECT_EQ(choice->childAt(look->rect().center().x(), look->rect().center().y()), look);
    }
    EXPECT_EQ(met()->child(1)->text(QAccessible::Name), "~/b, Opened yesterday");
    EXPECT_EQ(met()->child(1)->text(QAccessible::Description), "/b") << "the whole path";
}

TEST_F(CopiesListTest, TheirActionsChooseAndLook) {
    auto* const choice = met()->child(1);
    ASSERT_EQ(actions(choice), QStringList({QAccessibleActionInterface::toggleAction(),
                                            QAccessibleActionInterface::setFocusAction()}));
    act(choice, QAccessibleActionInterface::toggleAction());
    ASSERT_EQ(actions(choice->child(0)), QStringList({QAccessibleActionInterface::pressAction(),
                                                      QAccessibleActionInterface::setFocusAction()}));
    act(choice->child(0), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(told, QStringList({"keep b", "look b"}));
}

TEST_F(CopiesListTest, TheyFindAndMoveTheKeyboard) {
    EXPECT_EQ(met()->focusChild(), met()->child(0));
    act(met()->child(2)->child(0), QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(list.currentIndex(), row(2));
    EXPECT_EQ(list.part(), Part::Look);
    EXPECT_EQ(met()->focusChild(), met()->child(2)->child(0));
    EXPECT_TRUE(met()->child(2)->child(0)->state().focused);
    EXPECT_FALSE(met()->child(2)->state().focused);
}

TEST_F(CopiesListTest, AnotherChoiceIsTheStateOfItsRow) {
    auto* const second = met()->child(1);
    EXPECT_FALSE(second->state().checked);
    list.setRows({rowAt("a"), rowAt("b", true), rowAt("c")});
    EXPECT_TRUE(second->state().checked);
    EXPECT_FALSE(met()->child(0)->state().checked);
}

TEST_F(CopiesListTest, WhatWasMetOfARowThatWentIsGoneAndTheOthersStay) {
    auto* const first = met()->child(0);
    const auto gone = QAccessible::uniqueId(met()->child(1));
    auto* const third = met()->child(2);
    list.setRows({rowAt("a", true), rowAt("c"), rowAt("d")});
    EXPECT_EQ(QAccessible::accessibleInterface(gone), nullptr);
    EXPECT_EQ(met()->child(0), first);
    EXPECT_EQ(met()->child(1), third);
    EXPECT_EQ(met()->child(2)->text(QAccessible::Name), "~/d, Opened yesterday");
}
