#pragma once
#include "Result.h"
#include <string>
#include <vector>

namespace quillane {

// Runs programs of the system.
class CommandRunner {
  public:
    virtual ~CommandRunner() = default;
    // Runs the program at `path` with these arguments (never through a shell), reads its standard output to
    // the end and waits for its exit. Standard error is dropped and the exit status is not looked at. Fails
    // only when the program can't be started. The bytes are returned as they came. No time limit. Blocks;
    // any thread, many at once.
    virtual Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) = 0;
};

} // namespace quillane
