#pragma once
#include "Applications/ApplicationsTableModel.h"
#include "State/SortStep.h"
#include "Tables/KeyedTable.h"
#include "Tables/SortOrder.h"

namespace quillane {

class AppLibrary;
class StatusLine;
struct ContentState;

// The sortable table of all visible applications, with the status line below it.
class ApplicationsTable : public KeyedTable<ApplicationsTableModel, AppComparator> {
    Q_OBJECT
  public:
    ApplicationsTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~ApplicationsTable() override;

    StatusLine* statusLine() const;

  protected:
    void openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) override;

  private:
    void render();
    // Opens the selected application when it is the only one and can be seen.
    void openSelected();

    AppLibrary& m_library;
    ContentState& m_state;
    NameRanks m_names;
};

} // namespace quillane
