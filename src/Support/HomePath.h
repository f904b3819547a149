#pragma once
#include "FileURL.h"
#include <string>

namespace quillane {

// The path of `url` with that of `home` as "~", wherever it occurs and not only at the beginning. For the eye.
std::string pathWithHomeAsTilde(const FileURL& url, const FileURL& home);

} // namespace quillane
