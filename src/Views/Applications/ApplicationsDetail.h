#pragma once
#include "Panes/SectionDetail.h"

namespace quillane {

class AppDetailView;
class AppLibrary;
class MultiSelectionSummary;

// The right column of the applications.
class ApplicationsDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    ApplicationsDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    AppDetailView* one() const { return m_one; }
    MultiSelectionSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    AppLibrary& m_library;
    AppDetailView* m_one;
    MultiSelectionSummary* m_several;
};

} // namespace quillane
