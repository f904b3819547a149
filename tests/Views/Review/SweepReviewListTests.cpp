#include "SheetTest.h"
#include <QScrollBar>

using namespace quillane;

namespace {

class SweepReviewListTest : public SheetTest {
  protected:
    QString current() const { return list().currentIndex().data().toString(); }
    bool isShown(const QModelIndex& index) const {
        return list().viewport()->rect().contains(list().visualRect(index));
    }
    // 40 rows under caches and 40 under orphans: more than fit.
    static std::vector<SweepEntry> longPlan() {
        std::vector<SweepEntry> rows;
        for (int i = 0; i < 40; ++i) {
            rows.push_back(
                reviewRow("/c/" + std::to_string(i), SweepCategory::caches, 1, "Cache-" + std::to_string(i)));
            rows.push_back(reviewRow("/o/" + std::to_string(i), SweepCategory::orphans, 1,
                                     "Orphan-" + std::to_string(i)));
        }
        return rows;
    }
};

} // namespace

TEST_F(SweepReviewListTest, TheFocusStartsOnTheFirstRow) {
    open(mixedPlan());
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(current(), "first");
}

TEST_F(SweepReviewListTest, TheArrowsGoFromRowToRowAndPassTheCategoriesBy) {
    open(mixedPlan());
    press(Qt::Key_Down);
    EXPECT_EQ(current(), "second");
    press(Qt::Key_Down);
    EXPECT_EQ(current(), "Relay");
    press(Qt::Key_Down);
    EXPECT_EQ(current(), "Everything in the Trash");
    press(Qt::Key_Down);
    EXPECT_EQ(current(), "Everything in the Trash");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), "second");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), "first");
}

TEST_F(SweepReviewListTest, HomeEndAndThePageKeysLandOnRows) {
    open(longPlan());
    press(Qt::Key_End);
    EXPECT_EQ(current(), "Orphan-39");
    press(Qt::Key_Home);
    EXPECT_EQ(current(), "Cache-0");
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_PageDown);
        ASSERT_TRUE(SweepReviewModel::isEntry(list().currentIndex()));
    }
    EXPECT_EQ(current(), "Orphan-39");
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_PageUp);
        ASSERT_TRUE(SweepReviewModel::isEntry(list().currentIndex()));
    }
    EXPECT_EQ(current(), "Cache-0");
}

TEST_F(SweepReviewListTest, LeftAndRightStayWhereTheyAre) {
    open(mixedPlan());
    press(Qt::Key_Left);
    EXPECT_EQ(current(), "first");
    press(Qt::Key_Right);
    EXPECT_EQ(current(), "first");
    press(Qt::Key_Minus);
    EXPECT_TRUE(list().isExpanded(list().model()->index(0, 0)));
}

TEST_F(SweepReviewListTest, TheFirstRowOfACategoryBringsItsHeaderWithIt) {
    open(longPlan());
    press(Qt::Key_End);
    EXPECT_FALSE(isShown(list().model()->index(0, 0)));
    press(Qt::Key_Home);
    EXPECT_TRUE(isShown(list().model()->index(0, 0)));
    EXPECT_TRUE(isShown(row(0, 0)));
}

TEST_F(SweepReviewListTest, TypedLettersFindARow) {
    open(longPlan());
    QTest::keyClicks(&list(), "Orphan-7");
    EXPECT_EQ(current(), "Orphan-7");
}

TEST_F(SweepReviewListTest, LettersThatFindACategoryGoToItsFirstRow) {
    open(longPlan());
    QTest::keyClicks(&list(), "Orphaned");
    EXPECT_EQ(current(), "Orphan-0");
}

TEST_F(SweepReviewListTest, SpaceTicksTheCurrentRowAndNoOther) {
    open(mixedPlan());
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    EXPECT_TRUE(isTicked(row(0, 0)));
    EXPECT_FALSE(isTicked(row(0, 1)));
    press(Qt::Key_Space);
    EXPECT_TRUE(isTicked(row(0, 1)));
}

TEST_F(SweepReviewListTest, ASpaceBarThatIsHeldDownTicksOnce) {
    open(mixedPlan());
    press(Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendEvent(&list(), &held);
    }
    EXPECT_FALSE(isTicked(row(0, 0)));
}

TEST_F(SweepReviewListTest, TheRingRoundTheBoxShowsForTheKeyboardOnly) {
    open(mixedPlan());
    const QImage byMouse = list().viewport()->grab().toImage();
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    const QImage byKeyboard = list().viewport()->grab().toImage();
    EXPECT_NE(byMouse, byKeyboard);
    click(row(0, 0));
    click(row(0, 0));
    EXPECT_EQ(list().viewport()->grab().toImage(), byMouse);
}

TEST_F(SweepReviewListTest, ATickChangesNothingOfTheOtherRows) {
    open(mixedPlan());
    const QImage before = list().viewport()->grab(list().visualRect(row(0, 1))).toImage();
    click(row(0, 0));
    EXPECT_EQ(list().viewport()->grab(list().visualRect(row(0, 1))).toImage(), before);
}

TEST_F(SweepReviewListTest, AListOfAllLengthsEndsAboveItsLastRowsBlank) {
    open(longPlan());
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum());
    const QRect last = list().visualRect(row(1, 39));
    EXPECT_EQ(last.bottom(), list().viewport()->rect().bottom());
    EXPECT_EQ(last.height(), 44 + 16);
}
