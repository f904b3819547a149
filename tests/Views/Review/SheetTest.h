#pragma once
#include "AppLibrary.h"
#include "Components/Label.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "RemovalWorld.h"
#include "Review/SweepDoneStage.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "Review/SweepRunningStage.h"
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {

inline SweepEntry reviewRow(const std::string& path, SweepCategory category, Bytes bytes,
                            const std::string& title = {}, const std::string& subtitle = "Subtitle") {
    const FileURL url(path);
    return {url, category, title.empty() ? std::string(url.lastPathComponent()) : title, subtitle, bytes};
}

inline SweepEntry trashRow(Bytes bytes = 6'310'000'000) {
    return reviewRow("/Users/alex/.Trash", SweepCategory::trash, bytes, "Everything in the Trash",
                     "214 item(s), deleted permanently");
}

// Two categories and the Trash, in no particular order.
inline std::vector<SweepEntry> mixedPlan() {
    return {reviewRow("/Users/alex/Library/Relay", SweepCategory::orphans, 300'000),
            reviewRow("/Users/alex/Library/Caches/first", SweepCategory::caches, 1'000'000),
            trashRow(5'000'000),
            reviewRow("/Users/alex/Library/Caches/second", SweepCategory::caches, 2'000'000)};
}

// A sheet over a window, used as a person does, with time and jobs in the test's hand.
class SheetTest : public testing::Test {
  protected:
    SheetTest() {
        Look::setReducedMotion(true);
        window.resize(1280, 760);
        window.show();
    }
    ~SheetTest() override {
        delete sheet;
        Look::setReducedMotion(false);
        Look::setDark(false);
    }

    // What is confirmed is written down, and the sweep ends with `report` once the runner gets its turn.
    void open(std::vector<SweepEntry> entries, const std::unordered_set<FileURL>& initiallyExcluded = {}) {
        sheet = new SweepPreviewSheet(
            library, std::move(entries), initiallyExcluded,
            [this](std::vector<SweepEntry> included) -> Task<SweepReport> {
                ++confirmations;
                confirmed = std::move(included);
                co_return report;
            },
            &window);
        sheet->open();
        activate();
    }
    // What is confirmed is swept by the library, whose jobs wait for the runner.
    void present(std::vector<SweepEntry> entries, const std::string& label = "Clean Now") {
        sheet = SweepPreviewSheet::present(library, BulkRemoval::make(label, std::move(entries)), &window);
        activate();
    }
    // The outcome as the user sees it, without a real sweep.
    SweepDoneStage& openDone(SweepReport outcome) {
        report = std::move(outcome);
        open(mixedPlan());
        press(Qt::Key_Return);
        finish();
        return *sheet->doneStage();
    }

    void activate() {
        QApplication::setActiveWindow(sheet);
        QCoreApplication::processEvents();
    }
    // Jobs of the pools stay where they are.
    void turn() {
        for (int i = 0; i < 3; ++i) {
            world.runner.settle();
            QCoreApplication::processEvents();
        }
    }
    void finish() {
        world.runner.runAll();
        turn();
    }

    SweepReviewStage& review() const { return *sheet->reviewStage(); }
    SweepReviewList& list() const { return *review().list(); }
    PushButton& mainButton() const { return *review().mainButton(); }
    QModelIndex row(int section, int entry) const {
        return list().model()->index(entry, 0, list().model()->index(section, 0));
    }
    bool isTicked(const QModelIndex& index) const {
        return index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    }
    void click(const QModelIndex& index, int x = 300) const {
        list().scrollTo(index);
        const QRect place = list().visualRect(index);
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {x, place.top() + 20});
    }
    static void click(QWidget* widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    // Into what has the focus.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    RemovalWorld world;
    AppLibrary library{world.platform};
    QWidget window;
    QPointer<SweepPreviewSheet> sheet;
    SweepReport report;
    std::vector<SweepEntry> confirmed;
    int confirmations = 0;
};

} // namespace quillane
