#pragma once
#include "Panes/DetailPane.h"
#include "StartupItem.h"
#include <optional>
#include <set>
#include <string>

namespace quillane {

class AppLibrary;
class DetailHeader;
class DetailRow;
class Label;
class Note;
class Panel;

// The pane for one thing that starts by itself: what it is, who owns it, and what may safely be done with it.
class StartupDetailView : public DetailPane {
    Q_OBJECT
  public:
    // The library outlives the view.
    explicit StartupDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // Reads from the library whether it is protected, and is observed.
    void show(const StartupItem& item);
    // Nothing is shown now: what was said of an attempt to stop something is over.
    void forget();

    DetailHeader* header() const { return m_header; }
    Note* explanation() const { return m_explanation; }
    Note* adminNote() const { return m_adminNote; }
    Note* protectedNote() const { return m_protectedNote; }
    // What launchctl said when it did not stop the item.
    Note* stopError() const { return m_stopError; }
    PushButton* stopButton() const { return m_stop; }
    // Those that are there, from the top: "Kind", "Runs", "Loaded now".
    Panel* facts() const { return m_facts; }
    Label* program() const { return m_program; }
    Label* definedIn() const { return m_definedIn; }

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    StartupDetailView(AppLibrary& library, PushButton* stop, QWidget* parent);
    void addBlocks();
    void explain(const StartupItem& item);
    void showFacts(const StartupItem& item);
    void showButtons(const StartupItem& item, bool isProtected);
    void stopItem();
    void stopped(const FileURL& url, const std::optional<std::string>& message);
    void setStopError(const std::optional<std::string>& message);

    AppLibrary& m_library;
    std::optional<StartupItem> m_item;
    std::set<FileURL> m_stopping; // from the press of the button to its end
    DetailHeader* m_header;
    Note* m_explanation;
    Note* m_adminNote;
    Note* m_protectedNote;
    Note* m_stopError;
    PushButton* m_stop;
    Panel* m_facts;
    DetailRow* m_kind;
    DetailRow* m_runs;
    DetailRow* m_loaded;
    QWidget* m_loadedRow;
    Label* m_programCaption;
    Label* m_program;
    QWidget* m_programGap;
    Label* m_definedIn;
};

} // namespace quillane
