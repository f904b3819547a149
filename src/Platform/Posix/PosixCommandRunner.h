#pragma once
#include "CommandRunner.h"

namespace quillane {

// Programs by posix_spawn. The child gets the environment and the working directory of this process, no
// descriptor but 0, 1 and 2 (standard input is empty), no blocked signal and no ignored one.
// A program that can't be started fails with the code for its errno: missing, not executable, not a program
// (a script without an interpreter line is not handed to a shell), arguments that are too long; a path or an
// argument that holds a NUL is an invalid name. Has no state: one instance serves every thread.
class PosixCommandRunner final : public CommandRunner {
  public:
    Result<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override;
};

} // namespace quillane
