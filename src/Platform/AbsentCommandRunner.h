#pragma once
#include "CommandRunner.h"

namespace quillane {

// A machine without programs: nothing can be started. What a sample volume runs.
class AbsentCommandRunner final : public CommandRunner {
  public:
    Result<std::string> run(const std::string& /*path*/,
                            const std::vector<std::string>& /*arguments*/) override {
        return PlatformError{ErrorCode::kReadNoSuchFile, std::nullopt};
    }
};

} // namespace quillane
