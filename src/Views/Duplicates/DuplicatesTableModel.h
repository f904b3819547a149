#pragma once
#include "Duplicates/DuplicateRow.h"
#include "Tables/SectionModel.h"
#include <string>

namespace quillane {

// The rows of the table of copies, known by the id of their group.
class DuplicatesTableModel : public SectionModel<DuplicateRow, std::string> {
    Q_OBJECT
  public:
    enum Column : int { kFile, kCopies, kEach, kWasted };

    explicit DuplicatesTableModel(QObject* parent = nullptr);

  protected:
    const std::string& key(const DuplicateRow& row) const override { return row.id; }
    QVariant cellData(const DuplicateRow& row, int column, int role) const override;
};

} // namespace quillane
