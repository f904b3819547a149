#include "ItemIcon.h"
#include "BundleIcon.h"
#include "ContentTypes.h"
#include "IcnsReader.h"
#include "Pictures.h"
#include <optional>
#include <utility>

namespace quillane {
namespace {

// The bundle's own icon, where it has one that can be read.
std::optional<IconImage> applicationIcon(const FileSystem& files, const FileURL& bundle, int side) {
    const auto bytes = bundleIcon(files, bundle);
    auto picture = bytes ? IcnsReader::best(*bytes, side) : std::nullopt;
    if (!picture) {
        return std::nullopt;
    }
    switch (picture->form) {
    case IcnsReader::Picture::Form::png:
        return Pictures::decoded(picture->encoded, "png");
    case IcnsReader::Picture::Form::jpeg2000:
        return Pictures::decoded(picture->encoded, "jp2");
    case IcnsReader::Picture::Form::pixels:
        return std::move(picture->pixels);
    }
    return std::nullopt;
}

Pictures::Generic genericFor(const FileSystem& files, const FileURL& url) {
    if (url.pathExtension() == "app") {
        return Pictures::Generic::application; // also when it is gone
    }
    const auto values = files.resourceValues(url);
    const bool isFolder = values && values->type == EntryType::directory;
    return isFolder && !ContentTypes::ofFolder(url.pathExtension()).isPackage() ? Pictures::Generic::folder
                                                                                : Pictures::Generic::document;
}

} // namespace

std::shared_ptr<const IconImage> itemIcon(const FileSystem& files, const FileURL& url, int side) {
    auto own = url.pathExtension() == "app" ? applicationIcon(files, url, side) : std::nullopt;
    if (own && !own->isEmpty()) {
        return std::make_shared<IconImage>(std::move(*own));
    }
    return std::make_shared<IconImage>(Pictures::drawn(genericFor(files, url), side));
}

} // namespace quillane
