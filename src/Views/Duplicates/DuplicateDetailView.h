#pragma once
#include "DuplicateGroup.h"
#include "Duplicates/CopiesList.h"
#include "Panes/DetailPane.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

class AppLibrary;
class DetailHeader;
class Panel;
class StatGrid;

// The pane for one group: which of its copies is to stay.
class DuplicateDetailView : public DetailPane {
    Q_OBJECT
  public:
    // The library outlives the view.
    explicit DuplicateDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // What the user chose among the copies of this group stays chosen, and is forgotten with another group. Reads
    // from the library what is protected, and is observed.
    void show(const DuplicateGroup& group);
    // No group is shown any more.
    void forget();

    // The copy that would stay: the user's choice while it is there, else the suggested one. Nothing without a group.
    const std::optional<FileURL>& chosen() const { return m_chosen; }
    // From the top.
    const std::vector<FileURL>& shownCopies() const { return m_shown; }

    DetailHeader* header() const { return m_header; }
    Panel* copiesPanel() const { return m_copiesPanel; }
    CopiesList* copies() const { return m_copies; }
    StatGrid* stats() const { return m_stats; }

  signals:
    // A look at this copy is wanted, or no longer.
    void lookWanted(const quillane::FileURL& copy);
    // The keyboard has gone to this copy.
    void wentTo(const quillane::FileURL& copy);

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    void choose(const FileURL& copy);
    std::vector<DuplicateGroup> shownGroup() const;
    std::vector<CopiesList::Row> rowsOf(const DuplicateGroup& group) const;
    void showStats(const DuplicateGroup& group);

    AppLibrary& m_library;
    std::optional<std::string> m_id;
    std::optional<FileURL> m_keeper; // the user's choice
    std::optional<FileURL> m_chosen;
    std::vector<FileURL> m_shown;
    DetailHeader* m_header;
    CopiesList* m_copies;
    Panel* m_copiesPanel;
    StatGrid* m_stats;
};

} // namespace quillane
