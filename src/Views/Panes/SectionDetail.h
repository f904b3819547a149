#pragma once
#include "BulkRemoval.h"
#include <QPointer>
#include <QStackedWidget>
#include <cstddef>

namespace quillane {

class DetailPane;
class LibraryObserver;
class PanePlaceholder;
class SelectionSummary;
struct ContentState;

// The right column of a section: the pane for none, one or several selected rows. What a pane asks to remove
// goes to the review. A pane that comes never takes the keyboard.
class SectionDetail : public QStackedWidget {
    Q_OBJECT
  public:
    PanePlaceholder* placeholder() const { return m_none; }
    // Who gets the keyboard when a pane goes that has it: the rows, and not the pane that comes.
    void setKeyboardHeir(QWidget* heir) { m_keyboardHeir = heir; }

  protected:
    // The state outlives the column.
    explicit SectionDetail(ContentState& state, QWidget* parent);

    // Takes over the panes and shows the one that is due, now and after every change. Once, at the end of the
    // constructor.
    void begin(PanePlaceholder* none, DetailPane* one, SelectionSummary* several);
    // Puts what is selected into the pane that is due and answers how many that are. Reads the library and the
    // state, and is observed.
    virtual std::size_t fill() = 0;
    // All that is selected, as it is at the press of the button.
    virtual BulkRemoval removalForSelection() const = 0;
    const ContentState& state() const { return m_state; }
    // In sight or in front again, the words for dates are those of now.
    bool event(QEvent* event) override;

  private:
    void render();
    void showPane(QWidget* pane);

    ContentState& m_state;
    PanePlaceholder* m_none = nullptr;
    QWidget* m_one = nullptr;
    QWidget* m_several = nullptr;
    QPointer<QWidget> m_keyboardHeir;
    LibraryObserver* m_observer;
};

} // namespace quillane
