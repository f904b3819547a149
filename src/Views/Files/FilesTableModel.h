#pragma once
#include "Files/FileRow.h"
#include "Tables/SectionModel.h"

namespace quillane {

class Clock;

// The rows of the table of files, known by the file's location.
class FilesTableModel : public SectionModel<FileRow, FileURL> {
    Q_OBJECT
  public:
    enum Column : int { kName, kKind, kSize, kLastOpened, kWhere };

    // The clock outlives the model.
    explicit FilesTableModel(const Clock& clock, QObject* parent = nullptr);

    // What the marks of a name mean.
    static QString placeholderHelp();
    static QString installedHelp();

  protected:
    const FileURL& key(const FileRow& row) const override { return row.url; }
    QVariant cellData(const FileRow& row, int column, int role) const override;

  private:
    const Clock& m_clock;
};

} // namespace quillane
