#pragma once
#include "SweepEntry.h"
#include <QWidget>
#include <utility>
#include <vector>

class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

namespace quillane {

class AppLibrary;
class EmptyState;
class LibraryObserver;
class Panel;
class ToolbarRow;

// Beside the Overview: the largest rows of each ticked category.
class OverviewDetailView : public QWidget {
    Q_OBJECT
  public:
    static constexpr std::size_t kRows = 6; // of a category

    // The library outlives the view.
    explicit OverviewDetailView(AppLibrary& library, QWidget* parent = nullptr);

    ToolbarRow* toolbar() const { return m_toolbar; }
    EmptyState* placeholder() const { return m_placeholder; }
    bool showsPlaceholder() const;
    const std::vector<Panel*>& panels() const { return m_panels; }

  private:
    using Group = std::pair<SweepCategory, std::vector<SweepEntry>>;

    void render();
    std::vector<Group> groups() const;
    void show(std::vector<Group> groups);
    static Panel* panelOf(const Group& group);
    using QWidget::show;

    AppLibrary& m_library;
    ToolbarRow* m_toolbar;
    EmptyState* m_placeholder;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_column;
    QStackedWidget* m_states;
    std::vector<Group> m_groups; // those that m_panels show
    std::vector<Panel*> m_panels;
    LibraryObserver* m_observer = nullptr;
};

} // namespace quillane
