#pragma once
#include "Applications/AppRow.h"
#include "Components/IconPixmaps.h"
#include "Tables/SectionModel.h"

namespace quillane {

class Clock;

// The rows of the applications table.
class ApplicationsTableModel : public SectionModel<AppRow, FileURL> {
    Q_OBJECT
  public:
    enum Column : int { kName, kSize, kLastUsed, kArchitecture, kVersion };

    // The clock must outlive the model.
    explicit ApplicationsTableModel(const Clock& clock, QObject* parent = nullptr);

    // Icons have come: those that were missing are asked for again.
    void iconsArrived();

  protected:
    const FileURL& key(const AppRow& row) const override { return row.url; }
    QVariant cellData(const AppRow& row, int column, int role) const override;

  private:
    QVariant nameData(const AppRow& row, int role) const;
    QVariant sizeData(const AppRow& row, int role) const;
    QVariant lastUsedData(const AppRow& row, int role) const;
    QVariant architectureData(const AppRow& row, int role) const;
    QVariant versionData(const AppRow& row, int role) const;

    const Clock& m_clock;
    mutable IconPixmaps m_icons{20};
};

} // namespace quillane
