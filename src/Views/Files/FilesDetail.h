#pragma once
#include "Panes/SectionDetail.h"
#include "UserFile.h"
#include <vector>

namespace quillane {

class AppLibrary;
class BulkSummary;
class FileDetailView;

// The right column of the files.
class FilesDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    FilesDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    FileDetailView* one() const { return m_one; }
    BulkSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    void showSeveral(const std::vector<UserFile>& files);

    AppLibrary& m_library;
    FileDetailView* m_one;
    BulkSummary* m_several;
};

} // namespace quillane
