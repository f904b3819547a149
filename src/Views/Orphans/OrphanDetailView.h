#pragma once
#include "OrphanGroup.h"
#include "Panes/DetailPane.h"
#include <optional>
#include <string>

namespace quillane {

class AppLibrary;
class DetailHeader;
class DetailList;
class Note;
class Panel;
class StatGrid;

// The pane for what the removed applications of one vendor left behind.
class OrphanDetailView : public DetailPane {
    Q_OBJECT
  public:
    // The library outlives the view.
    explicit OrphanDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // Reads from the library what of it is protected or out of reach, and is observed.
    void show(const OrphanGroup& group);

    DetailHeader* header() const { return m_header; }
    Note* adminNote() const { return m_adminNote; }
    StatGrid* stats() const { return m_stats; }
    Panel* filesPanel() const { return m_filesPanel; }
    DetailList* files() const { return m_files; }

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    void showStats(const OrphanGroup& group);
    void showFiles(const std::vector<OrphanItem>& items);
    // The group as the library has it now; nothing when it is gone.
    std::optional<OrphanGroup> current() const;

    AppLibrary& m_library;
    std::optional<std::string> m_vendor;
    DetailHeader* m_header;
    Note* m_adminNote;
    StatGrid* m_stats;
    DetailList* m_files;
    Panel* m_filesPanel;
};

} // namespace quillane
