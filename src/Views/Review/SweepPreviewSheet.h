#pragma once
#include "BulkRemoval.h"
#include "Components/Sheet.h"
#include "FileURL.h"
#include "SweepEntry.h"
#include "SweepReport.h"
#include "Task.h"
#include <functional>
#include <unordered_set>
#include <vector>

class QStackedLayout;

namespace quillane {

class AppLibrary;
class PushButton;
class SweepDoneStage;
class SweepReviewModel;
class SweepReviewStage;
class SweepRunningStage;

// The one door through which everything passes on its way to the Trash. It lists every path, shows the sweep's
// progress after the user has confirmed, and then its outcome.
//
// The sweep itself belongs to the library's tasks and not to the sheet: were the window to go while it runs, it
// would still come to its end and record what can be put back.
class SweepPreviewSheet : public Sheet {
    Q_OBJECT
  public:
    enum class Stage { review, running, done };
    // Runs the sweep of the rows that were ticked. Called at most once.
    using OnConfirm = std::function<Task<SweepReport>(std::vector<SweepEntry>)>;

    static constexpr QSize kSize{640, 660};

    // `over` is any widget of the window that the sheet belongs to. The library outlives the sheet.
    SweepPreviewSheet(AppLibrary& library, std::vector<SweepEntry> entries,
                      const std::unordered_set<FileURL>& initiallyExcluded, OnConfirm onConfirm,
                      QWidget* over = nullptr);

    // Opens the sheet for a request; what is confirmed runs as a sweep of the library under the request's label.
    // It deletes itself when it closes.
    static SweepPreviewSheet* present(AppLibrary& library, BulkRemoval removal, QWidget* over);
    // The same, for what has more to do than that when it is confirmed.
    static SweepPreviewSheet* present(AppLibrary& library, BulkRemoval removal, OnConfirm onConfirm,
                                      QWidget* over);

    Stage stage() const { return m_stage; }
    SweepReviewModel& model() { return *m_model; }
    SweepReviewStage* reviewStage() const { return m_review; }
    SweepRunningStage* runningStage() const { return m_running; } // null before that stage
    SweepDoneStage* doneStage() const { return m_done; }          // null before that stage

    // Closes the sheet, except while a sweep runs.
    void reject() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void start();
    void finish(const SweepReport& report);
    // `defaultButton` may be null.
    void showStage(QWidget* stage, PushButton* defaultButton);

    AppLibrary& m_library;
    OnConfirm m_onConfirm;
    Stage m_stage = Stage::review;
    SweepReviewModel* m_model;
    SweepReviewStage* m_review;
    SweepRunningStage* m_running = nullptr;
    SweepDoneStage* m_done = nullptr;
    QStackedLayout* m_stages;
};

} // namespace quillane
