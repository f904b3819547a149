#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "FunctionRef.h"
#include "Platform.h"
#include "StopToken.h"

// What a path really occupies on disk. Every byte figure of the program comes from here.
namespace quillane::FootprintCalculator {

// Allocated bytes of a file, or of all regular files below a folder, hidden ones and the insides of packages
// included. Links add nothing and are not followed; hard links are not told apart. What can't be read counts
// as 0. A stop gives the figure reached so far. Blocks; any thread, many at once.
Bytes size(const Platform& platform, const FileURL& url, const StopToken& stop = {});

// Asked before each folder below; true leaves it out of the sum, for somebody else to measure.
using LeavesOut = FunctionRef<bool(const FileURL& folder)>;
// size() of all but the folders that are left out.
Bytes sizeOfRest(const Platform& platform, const FileURL& url, const StopToken& stop, LeavesOut leavesOut);

} // namespace quillane::FootprintCalculator
