#pragma once
#include "InstalledApp.h"
#include "Panes/DetailPane.h"
#include <optional>
#include <vector>

class QLayout;

namespace quillane {

class AppIcon;
class AppLibrary;
class Badge;
class DetailHeader;
class DetailRow;
class Note;
class Panel;
class ProtectedMark;
class PushButton;
class StatGrid;

// The pane for one application: what it is, what it occupies and where.
class AppDetailView : public DetailPane {
    Q_OBJECT
  public:
    // The library outlives the view.
    explicit AppDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // Reads from the library what may be removed of it, and is observed.
    void show(const InstalledApp& app);

    // The words of the second line of a leftover's row: "Caches, name match".
    static QString leftoverSubtitle(const LeftoverItem& item);

    PushButton* uninstallButton() const { return removeButton(); }
    PushButton* cleanCacheButton() const { return m_cleanCache; }
    ProtectedMark* protectedMark() const { return m_protected; }
    DetailHeader* header() const { return m_header; }
    std::vector<const Badge*> chips() const;
    Panel* footprint() const { return m_footprint; }
    QWidget* measuring() const { return m_measuring; }
    StatGrid* stats() const { return m_stats; }
    Note* rosettaNote() const { return m_rosettaNote; }
    std::vector<const DetailRow*> details() const;
    // Null without leftovers.
    Panel* supportFiles() const { return m_supportFiles; }

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    QLayout* makeHead();
    QWidget* makeChips();
    void makeFootprint();
    void makeDetails();
    void makeCleanCache();
    void cleanCache();
    void showHead(const InstalledApp& app);
    void showFootprint(const InstalledApp& app);
    void showCleanCache(const InstalledApp& app);
    void showDetails(const InstalledApp& app);
    void showSupportFiles(const std::vector<LeftoverItem>& leftovers);

    AppLibrary& m_library;
    std::optional<FileURL> m_url;
    std::vector<LeftoverItem> m_leftovers; // those that m_supportFiles shows

    AppIcon* m_icon;
    DetailHeader* m_header;
    Badge* m_architecture = nullptr;
    Badge* m_store = nullptr;
    Badge* m_source = nullptr;
    ProtectedMark* m_protected = nullptr;
    Panel* m_footprint = nullptr;
    QWidget* m_measuring = nullptr;
    StatGrid* m_stats = nullptr;
    Note* m_rosettaNote = nullptr;
    PushButton* m_cleanCache = nullptr;
    Panel* m_details = nullptr;
    DetailRow* m_bundleID = nullptr;
    DetailRow* m_location = nullptr;
    DetailRow* m_lastUsed = nullptr;
    DetailRow* m_minimumSystem = nullptr;
    Panel* m_supportFiles = nullptr;
};

} // namespace quillane
