#pragma once
#include "FileURL.h"
#include "LibrarySection.h"
#include "PreviewPanel.h"
#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>

class QWidget;

namespace quillane {

class LibraryObserver;
struct ContentState;

// Shows the file that is looked at in the system's own panel, where there is one: what QuickLookPanel is elsewhere, and
// open exactly while ContentState::quickLookURL is set. Closing the panel empties that; the main window's closing and
// another section do too. Keys that move in a list go to the list behind it.
class SystemQuickLook : public QObject {
    Q_OBJECT
  public:
    // Belongs to the window and must go before the state does; the panel outlives it. `list` gives what keys that move in
    // a list are for; it is asked when the panel opens, while the keyboard is where it was.
    SystemQuickLook(PreviewPanel& panel, ContentState& state, QWidget& window,
                    std::function<QWidget*()> list);
    ~SystemQuickLook() override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void render();
    void show(const FileURL& url);
    bool pass(PreviewPanel::Key key, bool withShift);

    PreviewPanel& m_panel;
    ContentState& m_state;
    QWidget& m_window;
    std::function<QWidget*()> m_findList;
    std::optional<FileURL> m_url; // absent while it is closed
    LibrarySection m_section{};   // in which it was opened
    QPointer<QWidget> m_list;
    LibraryObserver* m_observer;
};

} // namespace quillane
