#pragma once
#include "CommandRunner.h"

namespace quillane {

// Programs by posix_spawn. The child gets the environment and the working directory of this process, no
// descriptor but 0, 1 and 2 (standard input is empty), no blocked signal and no ignored one.
// A program that can't be started fails with the code for its errno: missing, not executable, not a program
// (a script without an interpreter line is not handed to a shell), arguments that are too long; a path or an
// argument that holds a NUL is an invalid name. A program that is ended gets SIGTERM and, a second later
// at most, SIGKILL, with all of its process group, which it leads; a request to stop is seen within 20 ms. Has no state: one instance serves every thread.
class PosixCommandRunner final : public CommandRunner {
  public:
    std::uint32_t userID() const override;

  protected:
    Result<std::string> outputOf(const Run& run) override;
};

} // namespace quillane
