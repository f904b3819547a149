#pragma once
#include "FileURL.h"
#include "InstalledApp.h"
#include <string>
#include <unordered_set>
#include <vector>

namespace quillane {

// What the applications that stay claim of the support files: what is listed for them, and what their identifiers
// name, since nothing is listed before a scan has measured them, nor ever for those of the system.
class StayingClaims {
  public:
    // Of `apps`, those at the locations of `going` don't stay.
    StayingClaims(const std::vector<InstalledApp>& apps, const std::vector<InstalledApp>& going);

    bool hold(const FileURL& supportFile) const;

  private:
    void add(const InstalledApp& app);

    std::unordered_set<FileURL> m_listed;
    std::vector<std::string> m_identifiers;
};

} // namespace quillane
