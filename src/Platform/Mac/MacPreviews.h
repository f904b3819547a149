#pragma once
#include "Previews.h"
#include "QuickLookThumbnails.h"

namespace quillane {

// Pictures of files as Quick Look draws them. It has no pages for others: who looks at a file does so in the system's own
// panel (MacPreviewPanel).
class MacPreviews final : public Previews {
  public:
    // `clock` outlives it.
    explicit MacPreviews(const Clock& clock)
        : m_thumbnails(clock) {}

    std::shared_ptr<const IconImage> thumbnail(const FileURL& url, PixelSize size,
                                               const StopToken& stop) override {
        return m_thumbnails.thumbnail(url, size, stop);
    }
    std::optional<PreviewPage> page(const FileURL&, int, PixelSize, const StopToken&) override {
        return std::nullopt;
    }

  private:
    QuickLookThumbnails m_thumbnails;
};

} // namespace quillane
