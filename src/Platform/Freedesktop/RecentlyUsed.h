#pragma once
#include "Date.h"
#include "FileURL.h"
#include <cstddef>
#include <string_view>
#include <unordered_map>

// The text of the desktop's register of recently used files (XBEL).
namespace quillane::RecentlyUsed {

using Dates = std::unordered_map<FileURL, Date>;

// Three times what the desktops keep at most.
inline constexpr std::size_t kMostBytes = std::size_t{8} << 20U;
// Beginnings of tags: what the tree takes in memory goes with them, and a text made of nothing else would make
// gigabytes of it.
inline constexpr std::size_t kMostTags = 400'000;

// When each registered file was last opened: the later of its "modified", which programs set as they register it, and
// its "visited". What is no file, has no date that can be read, or stands behind the place where the text breaks off
// is left out. Empty beyond the limits.
Dates parse(std::string_view text);

} // namespace quillane::RecentlyUsed
