#include "Review/SweepPreviewSheet.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/Label.h"
#include "Components/LibraryObserver.h"
#include "Components/PushButton.h"
#include "Review/SweepDoneStage.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "Review/SweepRunningStage.h"
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QStackedLayout>
#include <utility>

namespace quillane {

SweepPreviewSheet::SweepPreviewSheet(AppLibrary& library, std::vector<SweepEntry> entries,
                                     const std::unordered_set<FileURL>& initiallyExcluded,
                                     OnConfirm onConfirm, QWidget* over)
    : Sheet(kSize, over)
    , m_library(library)
    , m_onConfirm(std::move(onConfirm))
    , m_model(new SweepReviewModel(SweepReview(std::move(entries), initiallyExcluded), this))
    , m_review(new SweepReviewStage(*m_model))
    , m_stages(new QStackedLayout(this)) {
    setWindowTitle(QStringLiteral("Review"));
    connect(m_review, &SweepReviewStage::cancelled, this, &SweepPreviewSheet::reject);
    connect(m_review, &SweepReviewStage::confirmed, this, &SweepPreviewSheet::start);
    auto* const putBack =
        new LibraryObserver([this] { m_review->setWaiting(m_library.isPuttingBack.get()); }, this);
    putBack->renderNow();
    showStage(m_review, m_review->mainButton());
    m_review->list()->setFocus();
}

SweepPreviewSheet* SweepPreviewSheet::present(AppLibrary& library, BulkRemoval removal, QWidget* over) {
    auto sweep = [&library, label = removal.label](std::vector<SweepEntry> entries) {
        return library.runSweep(std::move(entries), label);
    };
    return present(library, std::move(removal), std::move(sweep), over);
}

SweepPreviewSheet* SweepPreviewSheet::present(AppLibrary& library, BulkRemoval removal, OnConfirm onConfirm,
                                              QWidget* over) {
    auto* const sheet = new SweepPreviewSheet(library, std::move(removal.entries), removal.initiallyExcluded,
                                              std::move(onConfirm), over);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
    return sheet;
}

void SweepPreviewSheet::showStage(QWidget* stage, PushButton* defaultButton) {
    m_stages->addWidget(stage);
    m_stages->setCurrentWidget(stage);
    // Only now: a dialog does not hear of a default button that became one before it joined, and would choose
    // one for itself.
    if (defaultButton != nullptr) {
        defaultButton->setDefault(true);
    }
}

void SweepPreviewSheet::start() {
    if (m_stage != Stage::review || m_model->review().includedCount() == 0 || m_library.isSweeping.get() ||
        m_library.isPuttingBack.get()) {
        return;
    }
    m_stage = Stage::running;
    auto included = m_model->review().included();
    m_running = new SweepRunningStage(m_library, included.size());
    showStage(m_running, nullptr);
    m_running->setFocus(); // there is nothing to press, and the focus must not stay behind
    // The sheet may be gone at the end, so the task holds no more of it than a guarded pointer.
    m_library.tasks().start([onConfirm = std::move(m_onConfirm), included = std::move(included),
                             sheet = QPointer(this)](StopToken) mutable -> Task<> {
        const SweepReport report = co_await onConfirm(std::move(included));
        if (sheet) {
            sheet->finish(report);
        }
    });
}

void SweepPreviewSheet::finish(const SweepReport& report) {
    m_stage = Stage::done;
    m_done =
        new SweepDoneStage(report, [this] { AppLibrary::openFullDiskAccessSettings(m_library.platform()); });
    connect(m_done, &SweepDoneStage::finished, this, &SweepPreviewSheet::accept);
    showStage(m_done, m_done->doneButton());
    m_done->setFocus();
    announce(*m_done, m_done->figure()->text() + QStringLiteral(" ") + m_done->caption()->text());
}

void SweepPreviewSheet::reject() {
    if (m_stage != Stage::running) {
        Sheet::reject();
    }
}

// The Return that opened the sheet may still be held down: it must confirm nothing that nobody has read.
void SweepPreviewSheet::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        return;
    }
    Sheet::keyPressEvent(event);
}

void SweepPreviewSheet::closeEvent(QCloseEvent* event) {
    if (m_stage == Stage::running) {
        event->ignore();
        return;
    }
    Sheet::closeEvent(event);
}

} // namespace quillane
