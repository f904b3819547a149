#pragma once
#include "Startup/StartupRow.h"
#include "Tables/SectionModel.h"

namespace quillane {

// The rows of the startup table, known by their location.
class StartupTableModel : public SectionModel<StartupRow, FileURL> {
    Q_OBJECT
  public:
    enum Column : int { kStatus, kLabel, kOwner, kKind, kRuns, kLoaded };

    explicit StartupTableModel(QObject* parent = nullptr);

  protected:
    const FileURL& key(const StartupRow& row) const override { return row.url; }
    QVariant cellData(const StartupRow& row, int column, int role) const override;
};

} // namespace quillane
