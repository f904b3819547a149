#pragma once
#include "SweepReport.h"
#include <QWidget>
#include <functional>

namespace quillane {

class FailuresView;
class Label;
class Panel;
class PushButton;
class ResultMark;

// The last stage of the review sheet: what came of it.
class SweepDoneStage : public QWidget {
    Q_OBJECT
  public:
    // `onGrantAccess` opens the system's settings.
    SweepDoneStage(const SweepReport& report, std::function<void()> onGrantAccess, QWidget* parent = nullptr);

    ResultMark* mark() const { return m_mark; }
    Label* figure() const { return m_figure; }
    Label* caption() const { return m_caption; }
    // A row for each category that gave something back; null when none did.
    Panel* categories() const { return m_categories; }
    Label* putBack() const { return m_putBack; }          // null when nothing went to the Trash
    FailuresView* failures() const { return m_failures; } // null when nothing failed
    PushButton* doneButton() const { return m_done; }

  signals:
    void finished();

  private:
    QWidget* makeContent(const SweepReport& report, std::function<void()> onGrantAccess);
    Panel* makeCategories(const SweepReport& report) const;
    QWidget* makePutBack(int items);
    QWidget* makeFooter();

    ResultMark* m_mark;
    Label* m_figure;
    Label* m_caption;
    Panel* m_categories = nullptr;
    Label* m_putBack = nullptr;
    FailuresView* m_failures = nullptr;
    PushButton* m_done;
};

} // namespace quillane
