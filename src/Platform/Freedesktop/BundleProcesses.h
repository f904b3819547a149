#pragma once
#include "FileSystem.h"
#include "RunningApplications.h"
#include <string>
#include <vector>

namespace quillane {

// Running applications as Linux knows them: processes whose executable lies in a bundle of that identifier.
// Reads the process table at each call: some milliseconds.
class BundleProcesses final : public RunningApplications {
  public:
    // `files` must outlive it. `processFolder` is where the system shows its processes.
    explicit BundleProcesses(const FileSystem& files, std::string processFolder = "/proc");

    bool isRunning(const std::string& bundleIdentifier) const override;
    // By SIGTERM.
    void terminate(const std::string& bundleIdentifier) override;

  private:
    std::vector<int> processes(const std::string& bundleIdentifier) const;

    const FileSystem& m_files;
    std::string m_processFolder;
};

} // namespace quillane
