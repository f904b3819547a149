#pragma once
#include "Files/ThumbnailLoader.h"
#include "Panes/DetailPane.h"
#include "UserFile.h"
#include <optional>

namespace quillane {

class AppLibrary;
class DetailHeader;
class FilePreview;
class Note;
class StatGrid;
class ValueField;

// The pane for one file: its look, what must be known before it goes, and where it lies.
class FileDetailView : public DetailPane {
    Q_OBJECT
  public:
    // What is asked for as a thumbnail: 600 by 400 points at double density.
    static constexpr PixelSize kThumbnail = {1200, 800};

    // The library outlives the view.
    explicit FileDetailView(AppLibrary& library, QWidget* parent = nullptr);

    using QWidget::show;
    // Reads from the library what is protected, and is observed.
    void show(const UserFile& file);
    // No file is shown any more.
    void forget();

    FilePreview* preview() const { return m_preview; }
    DetailHeader* header() const { return m_header; }
    Note* placeholderNote() const { return m_placeholderNote; }
    Note* installedNote() const { return m_installedNote; }
    Note* protectedNote() const { return m_protectedNote; }
    StatGrid* stats() const { return m_stats; }
    ValueField* folder() const { return m_folder; }

  signals:
    // A closer look at this file is wanted, or no longer.
    void lookWanted(const quillane::FileURL& file);

  protected:
    void reveal() override;
    void askToRemove() override;

  private:
    void showStats(const UserFile& file);

    AppLibrary& m_library;
    std::optional<FileURL> m_url;
    FilePreview* m_preview;
    DetailHeader* m_header;
    Note* m_placeholderNote;
    Note* m_installedNote;
    Note* m_protectedNote;
    StatGrid* m_stats;
    ValueField* m_folder;
    ThumbnailLoader m_thumbnail;
};

} // namespace quillane
