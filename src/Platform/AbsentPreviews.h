#pragma once
#include "Previews.h"

namespace quillane {

// A desktop that can picture nothing: every file is told by its icon.
class AbsentPreviews final : public Previews {
  public:
    std::shared_ptr<const IconImage> thumbnail(const FileURL&, PixelSize, const StopToken&) override {
        return nullptr;
    }
    std::optional<PreviewPage> page(const FileURL&, int, PixelSize, const StopToken&) override {
        return std::nullopt;
    }
};

} // namespace quillane
