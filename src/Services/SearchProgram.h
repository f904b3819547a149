#pragma once
#include "Platform.h"
#include <string>
#include <vector>

// The system's search program, as the finders read it.
namespace quillane::SearchProgram {

// The paths that it prints for these arguments, in its order, repaired where they are no UTF-8. A line that is no
// absolute path, such as a complaint about the query, is dropped. Empty when it can't be started. Blocks without a
// limit of time.
std::vector<std::string> paths(const Platform& platform, const std::vector<std::string>& arguments);

} // namespace quillane::SearchProgram
