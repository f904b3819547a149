#pragma once
#include "Date.h"
#include "FileURL.h"
#include <optional>

namespace quillane {

// What the system's metadata index knows of a single path.
class Metadata {
  public:
    virtual ~Metadata() = default;
    // When the item was last opened through the system; nothing when the index doesn't know. Any thread.
    virtual std::optional<Date> lastUsed(const FileURL& url) const = 0;
};

} // namespace quillane
