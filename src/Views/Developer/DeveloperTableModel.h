#pragma once
#include "Developer/DeveloperRow.h"
#include "Tables/SectionModel.h"

namespace quillane {

class Clock;

// The rows of the developer table, known by their location.
class DeveloperTableModel : public SectionModel<DeveloperRow, FileURL> {
    Q_OBJECT
  public:
    enum Column : int { kTool, kWhat, kSize, kInSweep, kLastTouched };

    // The clock must outlive the model.
    explicit DeveloperTableModel(const Clock& clock, QObject* parent = nullptr);

  protected:
    const FileURL& key(const DeveloperRow& row) const override { return row.url; }
    QVariant cellData(const DeveloperRow& row, int column, int role) const override;

  private:
    const Clock& m_clock;
};

} // namespace quillane
