#pragma once
#include "Orphans/OrphanRow.h"
#include "Tables/SectionModel.h"

namespace quillane {

class Clock;

// The rows of the table of orphans, known by their vendor.
class OrphanTableModel : public SectionModel<OrphanRow, std::string> {
    Q_OBJECT
  public:
    enum Column : int { kLeftBehindBy, kSize, kFiles, kLastTouched };

    // The clock must outlive the model.
    explicit OrphanTableModel(const Clock& clock, QObject* parent = nullptr);

  protected:
    const std::string& key(const OrphanRow& row) const override { return row.vendor; }
    QVariant cellData(const OrphanRow& row, int column, int role) const override;

  private:
    const Clock& m_clock;
};

} // namespace quillane
