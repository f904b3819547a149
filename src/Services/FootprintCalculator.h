#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Platform.h"
#include "StopToken.h"

// What a path really occupies on disk. Every byte figure of the program comes from here.
namespace quillane::FootprintCalculator {

// Allocated bytes of a file, or of all regular files below a folder, hidden ones and the insides of packages
// included. Links add nothing and are not followed; hard links are not told apart. What can't be read counts
// as 0. A stop gives the figure reached so far. Blocks; any thread, many at once.
Bytes size(const Platform& platform, const FileURL& url, const StopToken& stop = {});

} // namespace quillane::FootprintCalculator
