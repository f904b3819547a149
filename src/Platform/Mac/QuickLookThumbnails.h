#pragma once
#include "Clock.h"
#include "Previews.h"

namespace quillane {

// What Quick Look shows of a file: Previews::thumbnail of macOS. Blocks; any thread but the main one, many at once.
class QuickLookThumbnails final {
  public:
    // From the request to the moment when nothing is expected any more.
    static constexpr Duration kPatience = std::chrono::seconds(5);

    // `clock` outlives it.
    explicit QuickLookThumbnails(const Clock& clock)
        : m_clock(clock) {}

    // As Previews::thumbnail: null for what has no look of its own, where it does not come in time, and after a stop.
    std::shared_ptr<const IconImage> thumbnail(const FileURL& url, PixelSize size,
                                               const StopToken& stop) const;

  private:
    const Clock& m_clock;
};

} // namespace quillane
