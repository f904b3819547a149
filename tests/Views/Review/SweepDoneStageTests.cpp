#include "Components/Panel.h"
#include "Components/PermanentBadge.h"
#include "Review/DisclosureButton.h"
#include "Review/FailuresModel.h"
#include "Review/FailuresView.h"
#include "Review/ResultMark.h"
#include "Review/SweepResultRow.h"
#include "SheetTest.h"
#include <QAbstractItemModelTester>
#include <QListView>
#include <QScrollBar>

using namespace quillane;

namespace {

using Failures = std::vector<Uninstaller::Failure>;

class SweepDoneStageTest : public SheetTest {
  protected:
    static std::vector<const SweepResultRow*> rowsOf(const SweepDoneStage& done) {
        std::vector<const SweepResultRow*> rows;
        if (done.categories() != nullptr) {
            for (int i = 0; i < done.categories()->contentLayout()->count(); ++i) {
                const auto* widget = done.categories()->contentLayout()->itemAt(i)->widget();
                if (const auto* found = qobject_cast<const SweepResultRow*>(widget)) {
                    rows.push_back(found);
                }
            }
        }
        return rows;
    }
    static bool isPermanent(const SweepResultRow& row) { return row.findChild<PermanentBadge*>() != nullptr; }
    static Failures failures(int denied, int other) {
        Failures all;
        for (int i = 0; i < denied; ++i) {
            all.push_back({FileURL("/Users/alex/denied " + std::to_string(i)), "No access", true});
        }
        for (int i = 0; i < other; ++i) {
            all.push_back({FileURL("/Users/alex/other " + std::to_string(i)), "Failed", false});
        }
        return all;
    }
};

} // namespace

TEST_F(SweepDoneStageTest, ASweepThatSucceededShowsWhatItReclaimed) {
    const auto& done = openDone({{{SweepCategory::caches, 9'420'000'000},
                                  {SweepCategory::trash, 6'310'000'000},
                                  {SweepCategory::orphans, 0}},
                                 139,
                                 214,
                                 {}});
    EXPECT_TRUE(done.mark()->succeeded());
    EXPECT_EQ(done.mark()->symbol(), "checkmark");
    EXPECT_EQ(done.figure()->text(), "15.73 GB");
    EXPECT_EQ(done.caption()->text(), "reclaimed");
    const auto rows = rowsOf(done);
    ASSERT_EQ(rows.size(), 2U) << "a category that gave nothing has no row";
    EXPECT_EQ(rows[0]->category(), SweepCategory::caches);
    EXPECT_EQ(rows[0]->sizeText(), "9.42 GB");
    EXPECT_FALSE(isPermanent(*rows[0]));
    EXPECT_EQ(rows[1]->category(), SweepCategory::trash);
    EXPECT_TRUE(isPermanent(*rows[1]));
    EXPECT_EQ(done.putBack()->text(), "139 items are in the Trash and can be put back");
    EXPECT_EQ(done.failures(), nullptr);
    EXPECT_EQ(done.doneButton()->label(), "Done");
}

TEST_F(SweepDoneStageTest, CategoriesStandInTheirOrder) {
    SweepReport all;
    for (const auto category : kAllSweepCategories) {
        all.bytesByCategory[category] = 1;
    }
    const auto rows = rowsOf(openDone(all));
    ASSERT_EQ(rows.size(), kAllSweepCategories.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i]->category(), kAllSweepCategories[i]);
    }
}

TEST_F(SweepDoneStageTest, ASingleItemIsToldInTheSameWords) {
    const auto& done = openDone({{{SweepCategory::caches, 1}}, 1, 0, {}});
    EXPECT_EQ(done.putBack()->text(), "1 items are in the Trash and can be put back");
    EXPECT_EQ(done.caption()->text(), "reclaimed");
}

TEST_F(SweepDoneStageTest, ASweepInWhichEverythingFailedSaysThatNothingCouldBeMoved) {
    const auto& done = openDone({{{SweepCategory::caches, 0}}, 0, 0, failures(0, 2)});
    EXPECT_FALSE(done.mark()->succeeded());
    EXPECT_EQ(done.mark()->symbol(), "exclamationmark");
    EXPECT_EQ(done.figure()->text(), "Zero KB");
    EXPECT_EQ(done.caption()->text(), "nothing could be moved");
    EXPECT_EQ(done.categories(), nullptr);
    EXPECT_EQ(done.putBack(), nullptr);
}

TEST_F(SweepDoneStageTest, ASweepThatOnlyEmptiedTheTrashHasNoLineOnPuttingBack) {
    const auto& done = openDone({{{SweepCategory::trash, 6'310'000'000}}, 0, 214, {}});
    EXPECT_EQ(done.figure()->text(), "6.31 GB");
    const auto rows = rowsOf(done);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_TRUE(isPermanent(*rows[0]));
    EXPECT_EQ(done.putBack(), nullptr);
}

TEST_F(SweepDoneStageTest, WhenAllFailuresAreAccessFailuresMacOSBlockedAccess) {
    const auto& done = openDone({{}, 0, 0, failures(2, 0)});
    EXPECT_EQ(done.failures()->count(), "2 failed");
    EXPECT_EQ(done.failures()->cause(), "macOS blocked access");
    EXPECT_EQ(done.failures()->disclosure()->accessibleName(), "2 failed, macOS blocked access");
}

TEST_F(SweepDoneStageTest, WhenOneOfTwoIsAnAccessFailureOneIsBlockedByMacOS) {
    const auto& done = openDone({{}, 0, 0, failures(1, 1)});
    EXPECT_EQ(done.failures()->count(), "2 failed");
    EXPECT_EQ(done.failures()->cause(), "1 blocked by macOS");
    ASSERT_NE(done.failures()->grantButton(), nullptr);
    EXPECT_EQ(done.failures()->grantButton()->label(), QString::fromUtf8("Grant Full Disk Access…"));
}

TEST_F(SweepDoneStageTest, TheCauseOfEveryMixtureOfFailures) {
    EXPECT_EQ(FailuresView::cause(failures(1, 0)), "macOS blocked access");
    EXPECT_EQ(FailuresView::cause(failures(2, 1)), "2 blocked by macOS");
    EXPECT_EQ(FailuresView::cause(failures(1, 4)), "1 blocked by macOS");
    EXPECT_EQ(FailuresView::cause(failures(0, 3)), "");
    EXPECT_EQ(FailuresView::cause(failures(1'234, 1)), "1,234 blocked by macOS");
}

TEST_F(SweepDoneStageTest, OtherFailuresNameNoCauseAndOfferNoSettings) {
    const auto& done = openDone({{}, 0, 0, failures(0, 1)});
    EXPECT_EQ(done.failures()->count(), "1 failed");
    EXPECT_EQ(done.failures()->cause(), "");
    EXPECT_EQ(done.failures()->grantButton(), nullptr);
}

TEST_F(SweepDoneStageTest, TheSmallButtonOpensTheSettings) {
    const auto& done = openDone({{}, 0, 0, failures(1, 0)});
    click(done.failures()->grantButton());
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(SweepDoneStageTest, ReturnOnTheSmallButtonOpensTheSettingsAndKeepsTheSheet) {
    const auto& done = openDone({{}, 0, 0, failures(1, 0)});
    done.failures()->grantButton()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Return);
    EXPECT_EQ(world.workspace.settingsOpened(), 1);
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(SweepDoneStageTest, TheFailuresAreClosedAtFirstAndOpenByClickAndByKey) {
    const auto& view = *openDone({{}, 0, 0, failures(1, 1)}).failures();
    EXPECT_FALSE(view.showingFailures());
    EXPECT_FALSE(view.list()->isVisible());
    click(view.disclosure());
    EXPECT_TRUE(view.showingFailures());
    EXPECT_TRUE(view.list()->isVisible());
    view.disclosure()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_FALSE(view.list()->isVisible());
    press(Qt::Key_Right);
    EXPECT_TRUE(view.list()->isVisible());
    press(Qt::Key_Right);
    EXPECT_TRUE(view.list()->isVisible());
    press(Qt::Key_Left);
    EXPECT_FALSE(view.list()->isVisible());
}

TEST_F(SweepDoneStageTest, TheListGivesNameAndReasonInTheOrderOfTheReport) {
    const auto& view = *openDone({{},
                                  0,
                                  0,
                                  {{FileURL("/Users/alex/z/net.relaychat.Relay"), "No access", true},
                                   {FileURL("/Users/alex/a.plist"), "Failed", false}}})
                            .failures();
    const auto* model = view.list()->model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(0, 0).data().toString(), "net.relaychat.Relay");
    EXPECT_EQ(model->index(0, 0).data(FailuresModel::kReasonRole).toString(), "No access");
    EXPECT_EQ(model->index(1, 0).data().toString(), "a.plist");
    EXPECT_EQ(model->index(1, 0).data(Qt::AccessibleTextRole).toString(), "a.plist, Failed");
}

TEST_F(SweepDoneStageTest, AFewFailuresTakeTheirRoomAndManyScrollInAHundredAndTwenty) {
    const auto& few = *openDone({{}, 0, 0, failures(2, 0)}).failures();
    EXPECT_EQ(few.list()->height(), 2 * 22 + 10);
    delete sheet;
    const auto& many = *openDone({{}, 0, 0, failures(20'000, 0)}).failures();
    EXPECT_EQ(many.list()->height(), FailuresView::kHighestList);
    click(many.disclosure());
    turn();
    EXPECT_GT(many.list()->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(many.count(), "20,000 failed");
}

TEST_F(SweepDoneStageTest, ItKeepsTheContractOfModels) {
    FailuresModel model(failures(2, 1));
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 3);
}

TEST_F(SweepDoneStageTest, DoneHasTheFocusAndReturnOrEscapeLeave) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        const auto& done = openDone({{{SweepCategory::caches, 1}}, 1, 0, {}});
        EXPECT_TRUE(done.doneButton()->hasFocus());
        press(key);
        EXPECT_FALSE(sheet->isVisible());
        delete sheet;
    }
}

TEST_F(SweepDoneStageTest, EverythingFitsOrScrolls) {
    SweepReport all{{}, 139, 0, failures(9, 9)};
    for (const auto category : kAllSweepCategories) {
        all.bytesByCategory[category] = 1'000'000;
    }
    const auto& done = openDone(all);
    click(done.failures()->disclosure());
    turn();
    EXPECT_EQ(sheet->size(), SweepPreviewSheet::kSize);
    const auto bottomOf = [&](const QWidget& widget) {
        return widget.mapTo(sheet.data(), QPoint(0, widget.height())).y();
    };
    EXPECT_LE(bottomOf(*done.doneButton()), sheet->height());
}

TEST_F(SweepDoneStageTest, TheMarkComesInOnceAndWithReducedMotionAtOnce) {
    ResultMark still(true);
    still.show();
    EXPECT_FALSE(still.isAnimating());
    Look::setReducedMotion(false);
    ResultMark moving(false);
    moving.show();
    EXPECT_TRUE(moving.isAnimating());
    moving.findChild<QVariantAnimation*>()->setCurrentTime(220);
    EXPECT_FALSE(moving.isAnimating());
    moving.hide();
    moving.show();
    EXPECT_FALSE(moving.isAnimating());
}
