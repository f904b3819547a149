#pragma once
#include "Components/StatGrid.h"
#include "Panes/SummaryList.h"
#include <QWidget>
#include <optional>
#include <vector>

namespace quillane {

class Label;
class Note;
class PushButton;
class ToolbarRow;

// The right column while several rows are selected: how many, what they add up to, and which they are.
class SelectionSummary : public QWidget {
    Q_OBJECT
  public:
    struct Content {
        QString columnTitle; // in the first row of the column; may be empty
        QString heading;
        std::vector<StatGrid::Entry> stats;
        std::optional<QString> note; // with a warning symbol
        QString remove;              // what the button that removes them all says
        bool canRemove = true;       // false disables that button
        std::vector<SummaryList::Row> rows;
    };
    // `listName` is what assistive tools call the list.
    explicit SelectionSummary(const QString& listName, QWidget* parent = nullptr);

    void setContent(const Content& content);

    ToolbarRow* toolbar() const { return m_toolbar; }
    Label* heading() const { return m_heading; }
    StatGrid* stats() const { return m_stats; }
    Note* note() const { return m_note; }
    PushButton* removeButton() const { return m_remove; }
    SummaryList* list() const { return m_list; }

  signals:
    // The button was pressed: a review of all of them is wanted.
    void removeWanted();

  private:
    ToolbarRow* m_toolbar;
    Label* m_heading;
    StatGrid* m_stats;
    Note* m_note;
    PushButton* m_remove;
    SummaryList* m_list;
};

} // namespace quillane
