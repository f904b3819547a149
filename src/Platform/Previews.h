#pragma once
#include "FileURL.h"
#include "StopToken.h"
#include "Workspace.h"
#include <memory>
#include <optional>
#include <string>

namespace quillane {

// Sides in pixels of the screen, not in points.
struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

// One page of what is written or pictured in a file.
struct PreviewPage {
    std::shared_ptr<const IconImage> picture; // null where the file is told as text
    std::string text; // UTF-8, a beginning of what the file holds; empty beside a picture
    int number = 0;   // the first page is 0
    int count = 1;    // pages in all; at least number + 1
};

// Pictures of what lies in a file, for looking at. Whatever the file holds, an answer comes within seconds and within
// bounds of memory, and nothing is written but what the desktop's own thumbnailer keeps. All calls block: never on
// the main thread. Any other thread, many at once. A stop ends them soon, with no answer.
class Previews {
  public:
    virtual ~Previews() = default;

    // The look of a file's content, as it would stand in a pane: its proportions kept, and both sides together
    // within or around `size`, never larger than twice it. Null for what has no look of its own.
    virtual std::shared_ptr<const IconImage> thumbnail(const FileURL& url, PixelSize size,
                                                       const StopToken& stop) = 0;

    // A page of the file, a picture within `size`. Nothing for a file that is told by its icon and its facts alone,
    // and for a page that is not there.
    virtual std::optional<PreviewPage> page(const FileURL& url, int number, PixelSize size,
                                            const StopToken& stop) = 0;
};

} // namespace quillane
