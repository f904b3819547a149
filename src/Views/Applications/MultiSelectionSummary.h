#pragma once
#include "InstalledApp.h"
#include "Panes/SelectionSummary.h"
#include <vector>

namespace quillane {

// The pane for several selected applications.
class MultiSelectionSummary : public SelectionSummary {
    Q_OBJECT
  public:
    explicit MultiSelectionSummary(QWidget* parent = nullptr);

    using QWidget::show;
    // `canUninstall` is false when none of them can go: they are parts of the system or protected.
    void show(const std::vector<InstalledApp>& apps, bool canUninstall = true);
};

} // namespace quillane
