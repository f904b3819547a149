#pragma once
#include "Startup/StartupTableModel.h"
#include "Tables/KeyedTable.h"

namespace quillane {

class AppLibrary;
class SymbolView;
struct ContentState;

// What starts by itself: a row for each item, the worst first, and below the table how many there are and how many
// of them are not in order. Looks for them when it appears and has none.
class StartupTable : public KeyedTable<StartupTableModel, StartupComparator> {
    Q_OBJECT
  public:
    StartupTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~StartupTable() override;

    // Before the number of problems, while there are any.
    SymbolView* problemMark() const { return m_problemMark; }

  protected:
    void openMenu(const std::vector<FileURL>& urls, const QPoint& globalPosition) override;
    void showEvent(QShowEvent* event) override;

  private:
    void renderRows();
    void renderFooter();
    void renderEmptiness();

    AppLibrary& m_library;
    ContentState& m_state;
    SymbolView* m_problemMark;
};

} // namespace quillane
