#pragma once
#include "AppLibrary.h"
#include "Components/StatusRow.h"

namespace quillane {

class ProgressBar;
class Spinner;

// The line under the applications table: how far the scan is, and what the table adds up to.
class StatusLine : public StatusRow {
    Q_OBJECT
  public:
    explicit StatusLine(QWidget* parent = nullptr);

    using QWidget::show;
    void show(const AppLibrary::Phase& phase, std::size_t visibleApps, Bytes totalBytes);

    // What the line says in a phase.
    static QString words(const AppLibrary::Phase& phase, std::size_t visibleApps);

    Spinner* spinner() const { return m_spinner; }
    ProgressBar* bar() const { return m_bar; }

  private:
    Spinner* m_spinner;
    ProgressBar* m_bar;
};

} // namespace quillane
