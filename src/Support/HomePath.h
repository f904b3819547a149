#pragma once
#include "FileURL.h"
#include <string>

namespace quillane {

// The path of `url` with that of `home` as "~", wherever it occurs and not only at the beginning. For the eye.
std::string pathWithHomeAsTilde(const FileURL& url, const FileURL& home);

// The path with a leading "~" as the home folder: "~" alone, or before a slash. "~alex" stays as it stands.
std::string expandingTilde(const std::string& path, const FileURL& home);

} // namespace quillane
