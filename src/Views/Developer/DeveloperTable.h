#pragma once
#include "Developer/DeveloperTableModel.h"
#include "Tables/KeyedTable.h"
#include "Tables/SortOrder.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// What the tools of developers can make again: a row for each location, and below the table what is listed
// and what a cleanup would take of it.
class DeveloperTable : public KeyedTable<DeveloperTableModel, DeveloperComparator> {
    Q_OBJECT
  public:
    DeveloperTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~DeveloperTable() override;

  protected:
    void openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) override;

  private:
    void renderRows();
    void renderFooter();

    AppLibrary& m_library;
    ContentState& m_state;
    NameRanks m_names;
};

} // namespace quillane
