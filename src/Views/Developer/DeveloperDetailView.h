#pragma once
#include "DevCacheItem.h"
#include "Panes/DetailPane.h"
#include <optional>

namespace quillane {

class AppLibrary;
class DetailHeader;
class Label;
class Note;
class Panel;
class StatGrid;

// The pane for one location of a developer's tool: what removing it would mean.
class DeveloperDetailView : public DetailPane {
    Q_OBJECT
  public:
    // The library outlives the view.
    explicit DeveloperDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // Reads from the library whether it is protected, and is observed.
    void show(const DevCacheItem& item);

    DetailHeader* header() const { return m_header; }
    Panel* consequencePanel() const { return m_consequencePanel; }
    Label* consequence() const { return m_consequence; }
    StatGrid* stats() const { return m_stats; }
    Note* protectedNote() const { return m_protectedNote; }

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    void showStats(const DevCacheItem& item);

    AppLibrary& m_library;
    std::optional<FileURL> m_url;
    DetailHeader* m_header;
    Label* m_consequence;
    Panel* m_consequencePanel;
    StatGrid* m_stats;
    Note* m_protectedNote;
};

} // namespace quillane
