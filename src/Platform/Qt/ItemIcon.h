#pragma once
#include "FileURL.h"
#include "Workspace.h"
#include <memory>

namespace quillane {

class FileSystem;

// The icon of an item as we make it out of what lies there: an application's own, read from its bundle, and else a drawn
// one of its kind. At least `side` pixels square where the source holds that much; never null. Blocks; any thread.
std::shared_ptr<const IconImage> itemIcon(const FileSystem& files, const FileURL& url, int side);

} // namespace quillane
