#pragma once
#include "RunningApplications.h"

namespace quillane {

// The applications of this user's session, as the workspace knows them. What it knows moves only while the main run
// loop turns.
class WorkspaceApplications final : public RunningApplications {
  public:
    bool isRunning(const std::string& bundleIdentifier) const override;
    // This program is never asked.
    void terminate(const std::string& bundleIdentifier) override;
};

} // namespace quillane
