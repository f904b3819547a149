#pragma once
#include "CommandRunner.h"

namespace quillane {

// A machine without programs: nothing can be started. What a sample volume runs.
class AbsentCommandRunner final : public CommandRunner {
  protected:
    Result<std::string> outputOf(const Run& /*run*/) override {
        return PlatformError{ErrorCode::kReadNoSuchFile, std::nullopt};
    }
};

} // namespace quillane
