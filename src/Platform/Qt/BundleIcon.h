#pragma once
#include "FileSystem.h"
#include <cstddef>
#include <optional>
#include <string>

namespace quillane {

// The bytes of the icon container of an application bundle: the file of its resources that its property list
// names, with or without the extension "icns"; where it names none that can be read, the one that is named
// like the application's icon, or the only one there is. Nothing when there is none. At most kMostIconBytes are
// read. Blocks; any thread.
inline constexpr std::size_t kMostIconBytes = std::size_t{16} << 20U;
std::optional<std::string> bundleIcon(const FileSystem& files, const FileURL& bundle);

} // namespace quillane
