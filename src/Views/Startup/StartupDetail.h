#pragma once
#include "Panes/SectionDetail.h"
#include "StartupItem.h"
#include <vector>

namespace quillane {

class AppLibrary;
class BulkSummary;
class StartupDetailView;

// The right column of what starts by itself.
class StartupDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    StartupDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    StartupDetailView* one() const { return m_one; }
    BulkSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    void showSeveral(const std::vector<StartupItem>& items);

    AppLibrary& m_library;
    StartupDetailView* m_one;
    BulkSummary* m_several;
};

} // namespace quillane
