#pragma once
#include "Files/FilesTableModel.h"
#include "Tables/KeyedTable.h"
#include "Tables/SortOrder.h"

namespace quillane {

class AppLibrary;
class EmptyState;
class LensBar;
struct ContentState;

// The user's own files through one lens: the choice of the lens, a row for each file, and below the table what they
// take. Files are looked for when it comes into sight and there are none. The search of the window does not concern
// it.
class FilesTable : public KeyedTable<FilesTableModel, FileComparator> {
    Q_OBJECT
  public:
    // Library and state outlive the table.
    FilesTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~FilesTable() override;

    LensBar* lensBar() const { return m_lensBar; }

  protected:
    void openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) override;
    void showEvent(QShowEvent* event) override;

  private:
    bool isHintDue() const;
    void renderRows();
    void renderFooter();
    void renderEmptiness();
    void look();
    void followSelection();
    void leaveWhatHasGone();

    AppLibrary& m_library;
    ContentState& m_state;
    LensBar* m_lensBar;
    EmptyState* m_emptyState;
    NameRanks m_names;
};

} // namespace quillane
