#include "SheetTest.h"
#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace quillane;
using Role = SweepReviewModel::Role;

namespace {

using Mode = QAbstractItemModelTester::FailureReportingMode;

QModelIndex at(const SweepReviewModel& model, int section, int entry) {
    return model.index(entry, 0, model.index(section, 0));
}

} // namespace

TEST(SweepReviewModel, KeepsTheContractOfModelsThroughTicks) {
    SweepReviewModel model{SweepReview(mixedPlan())};
    const QAbstractItemModelTester tester(&model, Mode::Fatal);
    model.toggle(at(model, 0, 1));
    model.toggle(at(model, 2, 0));
    model.toggle(at(model, 0, 1));
}

TEST(SweepReviewModel, AnEmptyReviewIsAnEmptyTree) {
    SweepReviewModel model{SweepReview({})};
    const QAbstractItemModelTester tester(&model, Mode::Fatal);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(SweepReviewModel, CategoriesStandInTheirOrderOverTheirRows) {
    const SweepReviewModel model{SweepReview(mixedPlan())};
    ASSERT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(0, 0).data().toString(), "App Caches");
    EXPECT_EQ(model.index(1, 0).data().toString(), "Orphaned Files");
    EXPECT_EQ(model.index(2, 0).data().toString(), "Empty the Trash");
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 2);
    EXPECT_EQ(at(model, 0, 0).data().toString(), "first");
    EXPECT_EQ(at(model, 0, 1).data().toString(), "second");
    EXPECT_EQ(at(model, 0, 1).data(Role::kSizeRole).toString(), "2 MB");
    EXPECT_EQ(at(model, 0, 1).data(Role::kSubtitleRole).toString(), "Subtitle");
}

TEST(SweepReviewModel, EveryEntryIsFoundAtItsIndex) {
    const SweepReviewModel model{SweepReview(mixedPlan())};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto& title = model.review().entries()[i].title;
        EXPECT_EQ(model.indexOfEntry(i).data().toString(), QString::fromStdString(title));
    }
}

TEST(SweepReviewModel, ATickTellsTheRowItsCategoryAndTheSums) {
    SweepReviewModel model{SweepReview(mixedPlan())};
    const QSignalSpy changed(&model, &SweepReviewModel::dataChanged);
    const QSignalSpy ticked(&model, &SweepReviewModel::tickedChanged);
    model.toggle(at(model, 0, 0));
    ASSERT_EQ(changed.count(), 2);
    EXPECT_EQ(changed.at(0).at(0).toModelIndex(), at(model, 0, 0));
    EXPECT_EQ(changed.at(1).at(0).toModelIndex(), model.index(0, 0));
    EXPECT_EQ(ticked.count(), 1);
    EXPECT_EQ(model.index(0, 0).data(Role::kSizeRole).toString(), "2 MB");
}

TEST(SweepReviewModel, SettingTheTickThatStandsTellsNobody) {
    SweepReviewModel model{SweepReview(mixedPlan())};
    const QSignalSpy ticked(&model, &SweepReviewModel::tickedChanged);
    EXPECT_TRUE(model.setData(at(model, 0, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(ticked.count(), 0);
}

TEST(SweepReviewModel, ACategoryCannotBeTickedAndNothingCanBeRenamed) {
    SweepReviewModel model{SweepReview(mixedPlan())};
    EXPECT_FALSE(model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(model.setData(at(model, 0, 0), "other", Qt::EditRole));
    EXPECT_FALSE(model.index(0, 0).data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(model.review().includedCount(), 4U);
}

TEST(SweepReviewModel, RowsOfOneLocationShowOneTick) {
    SweepReviewModel model{
        SweepReview({reviewRow("/a", SweepCategory::caches, 1), reviewRow("/a", SweepCategory::orphans, 1)})};
    const QSignalSpy changed(&model, &SweepReviewModel::dataChanged);
    model.toggle(at(model, 1, 0));
    EXPECT_EQ(at(model, 0, 0).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_EQ(changed.count(), 4);
}

TEST(SweepReviewModel, ARowIsReadAloudWithItsSizeAndTheTrashAsPermanent) {
    const SweepReviewModel model{SweepReview(mixedPlan())};
    EXPECT_EQ(at(model, 0, 0).data(Qt::AccessibleTextRole).toString(), "first, 1 MB");
    EXPECT_EQ(at(model, 2, 0).data(Qt::AccessibleTextRole).toString(),
              "Everything in the Trash, 5 MB, permanent");
    EXPECT_EQ(model.index(0, 0).data(Qt::AccessibleTextRole).toString(), "App Caches, 3 MB");
    EXPECT_EQ(model.index(2, 0).data(Qt::AccessibleTextRole).toString(), "Empty the Trash, 5 MB, permanent");
}

TEST(SweepReviewModel, ANameThatWouldTurnTheTextRoundIsShownAsItIs) {
    const SweepReviewModel model{
        SweepReview({reviewRow("/a", SweepCategory::files, 1, "invoice\u202Efdp.exe", "bad\xFF.txt")})};
    EXPECT_EQ(at(model, 0, 0).data().toString(), QString::fromUtf8("invoice‹U+202E›fdp.exe"));
    EXPECT_EQ(at(model, 0, 0).data(Role::kSubtitleRole).toString(), QString::fromUtf8("bad\uFFFD.txt"));
}
