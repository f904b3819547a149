#pragma once
#include "InstalledApp.h"
#include "SelectionSummary.h"
#include <vector>

namespace quillane {

// The pane for several selected applications.
class MultiSelectionSummary : public SelectionSummary {
    Q_OBJECT
  public:
    explicit MultiSelectionSummary(QWidget* parent = nullptr);

    using QWidget::show;
    void show(const std::vector<InstalledApp>& apps);
};

} // namespace quillane
