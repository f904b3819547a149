#pragma once
#include "AppLibrary.h"
#include "Tables/MenuEntries.h"
#include "Tables/TableColumn.h"
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class QAbstractItemModel;

namespace quillane {

class EmptyState;
class StatusRow;
class TableView;
struct ContentState;

// What a section says in place of rows.
struct EmptyWords {
    QString symbol;
    QString title;    // when there is nothing
    QString sentence; // the same, said at length
    QString looking;  // while a scan looks for it
};

// The middle column of a section that is a table: the rows, and the footer below them.
class SectionTable : public QWidget {
    Q_OBJECT
  public:
    TableView* table() const { return m_table; }
    StatusRow* footer() const { return m_footer; }

  protected:
    // In sight or in front again, the words for dates are those of now.
    bool event(QEvent* event) override;
    // `name` is what assistive tools call the table. Takes over the footer.
    SectionTable(const QString& name, QAbstractItemModel* model, std::vector<TableColumn> columns,
                 StatusRow* footer, QWidget* parent);

    // Runs `render` now and again whenever something that it reads of the library or of the window's state
    // changes, while the table is in sight.
    void drawWith(std::function<void()> render);
    // The way of a request for a removal from here to its review. The state outlives the table.
    static MenuEntries::Present presentIn(ContentState& state);
    // Puts controls above the rows, which Tab then meets after them.
    void putAbove(QWidget* controls);
    // From now on the key for copying puts the paths of these on the clipboard, a line each; none leaves it alone.
    void copyPathsOf(std::function<std::vector<FileURL>()> selected);
    // From now on the table explains why it has no rows.
    void setEmptyWords(EmptyWords words);
    // Why it has none: what it lists is empty, because nothing has been found or not yet, or the search hides
    // it all. It is found by the stage of the scan that `foundBy` names. Reads the phase of the scan.
    void explainEmptiness(const AppLibrary& library, AppLibrary::Phase::Kind foundBy, bool isListEmpty);
    // The same for what no scan finds. `looking` is what is being done to find it; absent while nothing is.
    void explainEmptiness(const std::optional<QString>& looking, bool isListEmpty);

  private:
    TableView* m_table;
    StatusRow* m_footer;
    EmptyState* m_emptyState = nullptr;
    EmptyWords m_emptyWords;
};

} // namespace quillane
