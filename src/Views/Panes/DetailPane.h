#pragma once
#include "BulkRemoval.h"
#include <QWidget>

class QScrollArea;
class QVBoxLayout;

namespace quillane {

class PushButton;
class ToolbarRow;

// The pane for one selected row: its buttons in the first row, and below them its blocks, which scroll. Panes
// are filled anew in place, so that scroll position and focus stay while a scan goes on.
class DetailPane : public QWidget {
    Q_OBJECT
  public:
    ToolbarRow* toolbar() const { return m_toolbar; }
    PushButton* revealButton() const { return m_reveal; }
    // The destructive one.
    PushButton* removeButton() const { return m_remove; }
    QScrollArea* scrollArea() const { return m_scroll; }
    // What the lock of a file in a list means.
    static QString lockHelp();

  signals:
    // A review is wanted.
    void removalWanted(const quillane::BulkRemoval& removal);

  protected:
    // Where the destructive button stands: in the first row, or wide wherever the pane puts it among its blocks.
    enum class RemoveButton { InToolbar, AmongBlocks };
    // `removeLabel` is what the destructive button says, `name` what assistive tools call the blocks. `first`, where
    // there is one, stands before the other buttons.
    DetailPane(const QString& removeLabel, const QString& name, QWidget* parent,
               RemoveButton place = RemoveButton::InToolbar, PushButton* first = nullptr);

    // From the top; what is hidden takes no room.
    QVBoxLayout* blocks() const { return m_blocks; }
    // For another row than the one before.
    void scrollToTop();
    // The buttons were pressed. What is shown may be a turn behind the library.
    virtual void reveal() = 0;
    virtual void askToRemove() = 0;

  private:
    ToolbarRow* m_toolbar;
    PushButton* m_reveal;
    PushButton* m_remove;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_blocks;
};

} // namespace quillane
