#pragma once
#include "Components/ColumnGround.h"
#include "Shell/StandingScreens.h"
#include <vector>

namespace quillane {

class BrandButton;
class LibraryObserver;
class SidebarView;
struct ContentState;

// The left column: the brand row, and the sections with their badges.
class Sidebar : public ColumnGround {
    Q_OBJECT
  public:
    struct Entry {
        LibrarySection section;
        std::function<int()> badge;
        Tint badgeTint = Tint::Secondary;
    };
    Sidebar(ContentState& state, std::vector<Entry> entries, QWidget* parent = nullptr);

    BrandButton* brand() const { return m_brand; }
    SidebarView* list() const { return m_list; }

  private:
    void enterSelected();
    void render();

    ContentState& m_state;
    const std::vector<Entry> m_entries;
    BrandButton* m_brand;
    SidebarView* m_list;
    LibraryObserver* m_observer;
};

} // namespace quillane
