#pragma once
#include "Date.h"
#include "FileURL.h"
#include "StopToken.h"
#include "Workspace.h"
#include <memory>

namespace quillane {

// Somebody else who makes pictures of files and keeps them: for what we don't decode ourselves. Blocks; any thread,
// many at once.
class ThumbnailMaker {
  public:
    virtual ~ThumbnailMaker() = default;
    // What is kept for the file as it was modified then; null where that is smaller than asked, in pixels.
    virtual std::shared_ptr<const IconImage> existing(const FileURL& url, Date modified, int leastSide) = 0;
    // The same after it has been asked for; null where it does not come within seconds.
    virtual std::shared_ptr<const IconImage> made(const FileURL& url, Date modified, int side,
                                                  const StopToken& stop) = 0;
};

} // namespace quillane
