#pragma once
#include "FileURL.h"
#include <functional>
#include <memory>

namespace quillane {

// Tells that something happened directly inside a folder.
class DirectoryWatch {
  public:
    // One folder that is watched. Letting it go ends the watch: the handler is not called any more, not even for
    // what happened before. It goes before the port, and on the main thread.
    class Source {
      public:
        Source() = default;
        Source(const Source&) = delete;
        Source& operator=(const Source&) = delete;
        virtual ~Source() = default;
    };

    virtual ~DirectoryWatch() = default;
    // Watches one level of the folder that lies at `folder` now. `changed` is called on the main thread, at a later
    // turn, after something directly inside was made, removed or renamed, and after the folder itself was renamed,
    // removed or taken away by an unmount; many changes may give one call, and a call may come for nothing. What
    // happens deeper is not told. The watch stays with that folder: one that takes its place later is not watched.
    // Null when the folder can't be watched: missing, no folder, refused. Links at its end are followed. Main thread.
    virtual std::unique_ptr<Source> watch(const FileURL& folder, std::function<void()> changed) = 0;
};

} // namespace quillane
