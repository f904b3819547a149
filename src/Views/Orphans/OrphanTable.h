#pragma once
#include "Orphans/OrphanTableModel.h"
#include "Tables/KeyedTable.h"
#include "Tables/SortOrder.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// What removed applications left behind: a row for each vendor, and below the table what all of it comes to.
class OrphanTable : public KeyedTable<OrphanTableModel, OrphanComparator> {
    Q_OBJECT
  public:
    OrphanTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~OrphanTable() override;

  protected:
    void openMenu(const std::vector<std::string>& vendors, const QPoint& globalPosition) override;

  private:
    void renderRows();
    void renderFooter();

    AppLibrary& m_library;
    ContentState& m_state;
    NameRanks m_names;
};

} // namespace quillane
