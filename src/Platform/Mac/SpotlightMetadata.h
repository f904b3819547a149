#pragma once
#include "Metadata.h"

namespace quillane {

// What Spotlight's index knows of a path. Asks the system's metadata server each time, which blocks, so never on the
// main thread.
class SpotlightMetadata final : public Metadata {
  public:
    std::optional<Date> lastUsed(const FileURL& url) const override;
};

} // namespace quillane
