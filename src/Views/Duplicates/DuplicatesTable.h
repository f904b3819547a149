#pragma once
#include "Duplicates/DuplicatesTableModel.h"
#include "Tables/KeyedTable.h"
#include "Tables/SortOrder.h"

namespace quillane {

class AppLibrary;
struct ContentState;

// Files that are on the disk more than once: a row for each group of copies, and below the table what keeping one of
// each would give back. Copies are looked for when it comes into sight and there are none.
class DuplicatesTable : public KeyedTable<DuplicatesTableModel, DuplicateComparator> {
    Q_OBJECT
  public:
    DuplicatesTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~DuplicatesTable() override;

  protected:
    void openMenu(const std::vector<std::string>& ids, const QPoint& globalPosition) override;
    void showEvent(QShowEvent* event) override;

  private:
    void renderRows();
    void renderFooter();
    void renderEmptiness();

    AppLibrary& m_library;
    ContentState& m_state;
    NameRanks m_names;
};

} // namespace quillane
