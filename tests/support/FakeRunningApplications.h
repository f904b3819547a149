#pragma once
#include "RunningApplications.h"
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quillane {

// A table of what runs. An application quits when it is asked, unless it is stubborn.
class FakeRunningApplications final : public RunningApplications {
  public:
    void start(const std::string& bundleIdentifier, bool isStubborn = false) {
        m_running[bundleIdentifier] = isStubborn;
    }
    void stop(const std::string& bundleIdentifier) { m_running.erase(bundleIdentifier); }
    bool isRunning(const std::string& bundleIdentifier) const override {
        return m_running.contains(bundleIdentifier);
    }
    void terminate(const std::string& bundleIdentifier) override {
        asked.push_back(bundleIdentifier);
        if (const auto found = m_running.find(bundleIdentifier); found != m_running.end() && !found->second) {
            m_running.erase(found);
        }
    }
    // Who was asked to quit, in order.
    std::vector<std::string> asked;

  private:
    std::map<std::string, bool> m_running; // whether it is stubborn
};

} // namespace quillane
