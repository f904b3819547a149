#pragma once
#include <QWidget>

namespace quillane {

class AppLibrary;
class AppTableModel;
class LibraryObserver;
class StatusLine;
class TableView;
struct AppComparator;
struct ContentState;

// The sortable table of all visible applications, with the status line below it.
class ApplicationsTable : public QWidget {
    Q_OBJECT
  public:
    ApplicationsTable(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);
    ~ApplicationsTable() override;

    TableView* table() const { return m_table; }
    StatusLine* statusLine() const { return m_statusLine; }

  private:
    void render();
    void restoreSelection();
    void takeOverSelection();
    void showSortOrder();
    void changeSortOrder(const AppComparator& comparator);
    // For the rows that are selected and can be seen, or for the empty table.
    void openMenu(bool forRows, const QPoint& globalPosition);
    // Opens the selected application when it is the only one and can be seen.
    void openSelected();

    AppLibrary& m_library;
    ContentState& m_state;
    AppTableModel* m_model;
    TableView* m_table;
    StatusLine* m_statusLine;
    LibraryObserver* m_rows;
    LibraryObserver* m_icons;
    bool m_isRendering = false; // what changes the selection now is the model, not the user
};

} // namespace quillane
