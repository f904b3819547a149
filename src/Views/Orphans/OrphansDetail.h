#pragma once
#include "OrphanGroup.h"
#include "Panes/SectionDetail.h"
#include <vector>

namespace quillane {

class AppLibrary;
class BulkSummary;
class OrphanDetailView;

// The right column of the orphaned files.
class OrphansDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    OrphansDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    OrphanDetailView* one() const { return m_one; }
    BulkSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    void showSeveral(const std::vector<OrphanGroup>& groups);

    AppLibrary& m_library;
    OrphanDetailView* m_one;
    BulkSummary* m_several;
};

} // namespace quillane
