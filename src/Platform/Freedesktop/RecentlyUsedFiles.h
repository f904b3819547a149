#pragma once
#include "Metadata.h"

namespace quillane {

// A system without a metadata index: it knows nothing of anything.
class AbsentMetadata final : public Metadata {
  public:
    std::optional<Date> lastUsed(const FileURL& /*url*/) const override { return std::nullopt; }
};

} // namespace quillane
