#include "InstalledApp.h"
#include "Calendar.h"
#include "Hashing.h"
#include <algorithm>
#include <iterator>

namespace quillane {

Bytes InstalledApp::totalBytes() const {
    return checkedSum(bundleBytes, leftoverBytes());
}

Bytes InstalledApp::leftoverBytes() const {
    return sumOfBytes(leftovers, [](const LeftoverItem& item) { return item.bytes; });
}

std::vector<LeftoverItem> InstalledApp::cacheItems() const {
    std::vector<LeftoverItem> items;
    std::ranges::copy_if(leftovers, std::back_inserter(items), &LeftoverItem::isCache);
    return items;
}

std::optional<int> InstalledApp::daysSinceLastUse(Date now, const Calendar& calendar) const {
    if (!lastUsed) {
        return std::nullopt;
    }
    return calendar.daysBetween(*lastUsed, now);
}

} // namespace quillane

std::size_t std::hash<quillane::InstalledApp>::operator()(const quillane::InstalledApp& app) const noexcept {
    return quillane::hashOf(app.url, app.name, app.bundleIdentifier, app.version, app.buildVersion,
                            app.minimumSystemVersion, app.architecture, app.source, app.isMacAppStore,
                            app.lastUsed, app.bundleBytes, quillane::hashOfRange(app.leftovers),
                            app.isMeasured);
}
