#pragma once
#include <string>

namespace quillane {

// The applications that run now.
class RunningApplications {
  public:
    virtual ~RunningApplications() = default;
    // Whether at least one application of this bundle identifier runs. Main thread; quick.
    virtual bool isRunning(const std::string& bundleIdentifier) const = 0;
    // Politely asks each of them to quit, once, and returns at once. Never forces.
    virtual void terminate(const std::string& bundleIdentifier) = 0;
};

} // namespace quillane
