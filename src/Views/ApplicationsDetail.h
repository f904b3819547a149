#pragma once
#include "InstalledApp.h"
#include <QStackedWidget>
#include <vector>

namespace quillane {

class AppDetailView;
class AppLibrary;
class LibraryObserver;
class MultiSelectionSummary;
class PanePlaceholder;
struct ContentState;

// The right column of the applications: the pane for none, one or several.
class ApplicationsDetail : public QStackedWidget {
    Q_OBJECT
  public:
    ApplicationsDetail(AppLibrary& library, ContentState& state, QWidget* parent = nullptr);

    PanePlaceholder* placeholder() const { return m_none; }
    AppDetailView* one() const { return m_one; }
    MultiSelectionSummary* several() const { return m_several; }

  private:
    void render();
    // The selected applications that still exist, in the order of the library.
    std::vector<InstalledApp> selectedApps() const;

    AppLibrary& m_library;
    ContentState& m_state;
    PanePlaceholder* m_none;
    AppDetailView* m_one;
    MultiSelectionSummary* m_several;
    LibraryObserver* m_observer;
};

} // namespace quillane
