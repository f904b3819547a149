#pragma once
#include "DuplicateGroup.h"
#include "Panes/SectionDetail.h"
#include <vector>

namespace quillane {

class AppLibrary;
class BulkSummary;
class DuplicateDetailView;

// The right column of the copies.
class DuplicatesDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    DuplicatesDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    DuplicateDetailView* one() const { return m_one; }
    BulkSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    std::vector<DuplicateGroup> selected() const;
    void showSeveral(const std::vector<DuplicateGroup>& groups);
    void look(const FileURL& copy);
    void followTo(const FileURL& copy);
    void followWith(const std::vector<FileURL>& shownBefore);

    AppLibrary& m_library;
    ContentState& m_state;
    DuplicateDetailView* m_one;
    BulkSummary* m_several;
};

} // namespace quillane
