#pragma once
#include <array>
#include <string_view>

namespace quillane {

// The lenses through which the Files screen looks at the user's files.
enum class FilesMode { large, screenshots, installers, search };

inline constexpr std::array kAllFilesModes = {FilesMode::large, FilesMode::screenshots, FilesMode::installers,
                                              FilesMode::search};

// The label, such as "Large & Old".
std::string_view rawValue(FilesMode mode);

} // namespace quillane
