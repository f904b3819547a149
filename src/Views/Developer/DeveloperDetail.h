#pragma once
#include "DevCacheItem.h"
#include "Panes/SectionDetail.h"
#include <vector>

namespace quillane {

class AppLibrary;
class BulkSummary;
class DeveloperDetailView;

// The right column of the developer caches.
class DeveloperDetail : public SectionDetail {
    Q_OBJECT
  public:
    // Library and state outlive the column.
    DeveloperDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    DeveloperDetailView* one() const { return m_one; }
    BulkSummary* several() const { return m_several; }

  protected:
    std::size_t fill() override;
    BulkRemoval removalForSelection() const override;

  private:
    void showSeveral(const std::vector<DevCacheItem>& items);

    AppLibrary& m_library;
    DeveloperDetailView* m_one;
    BulkSummary* m_several;
};

} // namespace quillane
