#include "StayingClaims.h"
#include "LeftoverFinder.h"
#include <algorithm>

namespace quillane {

StayingClaims::StayingClaims(const std::vector<InstalledApp>& apps, const std::vector<InstalledApp>& going) {
    std::unordered_set<FileURL> leaving;
    for (const auto& app : going) {
        leaving.insert(app.url);
    }
    for (const auto& app : apps) {
        if (!leaving.contains(app.url)) {
            add(app);
        }
    }
}

bool StayingClaims::hold(const FileURL& supportFile) const {
    return m_listed.contains(supportFile) ||
           std::ranges::any_of(m_identifiers, [&](const std::string& identifier) {
               return LeftoverFinder::namesIdentifier(supportFile.lastPathComponent(), identifier);
           });
}

void StayingClaims::add(const InstalledApp& app) {
    for (const auto& item : app.leftovers) {
        m_listed.insert(item.url);
    }
    if (const auto identifier = app.bundleIdentifier.value_or(""); !identifier.empty()) {
        m_identifiers.push_back(identifier);
    }
}

} // namespace quillane
