#pragma once
#include "CommandRunner.h"

namespace quillane {

// A machine without programs: nothing can be started. What a sample volume runs.
class AbsentCommandRunner final : public CommandRunner {
  public:
    std::uint32_t userID() const override { return kFirstUserOfAMac; }

  protected:
    Result<std::string> outputOf(const Run& /*run*/) override {
        return PlatformError{ErrorCode::kReadNoSuchFile, std::nullopt};
    }

  private:
    static constexpr std::uint32_t kFirstUserOfAMac = 501;
};

} // namespace quillane
