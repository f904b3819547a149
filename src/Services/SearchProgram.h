#pragma once
#include "Platform.h"
#include "StopToken.h"
#include <string>
#include <vector>

// The system's search program, as the finders read it.
namespace quillane::SearchProgram {

// The lines that it prints for these arguments, in its order, repaired where they are no UTF-8: each is a path, with
// what the arguments ask for behind it. A line that begins with no absolute path, such as a complaint about the query
// or the rest of a name with a line feed in it, is dropped. Empty when it can't be started, and when stopped, which also ends
// the program. Blocks without a limit of time.
std::vector<std::string> lines(const Platform& platform, const std::vector<std::string>& arguments,
                               const StopToken& stop = {});

} // namespace quillane::SearchProgram
