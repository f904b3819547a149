#pragma once
#include "InstalledApp.h"
#include <string>
#include <utility>

namespace quillane {

// Records as the scan would build them, for tests that need applications and no disk.
inline InstalledApp measuredApp(std::string name, Bytes bundleBytes) {
    InstalledApp app;
    app.url = FileURL("/Applications/" + name + ".app");
    app.name = std::move(name);
    app.version = "1.0";
    app.buildVersion = "100";
    app.architecture = Architecture::universal;
    app.source = AppSource::applications;
    app.bundleBytes = bundleBytes;
    app.isMeasured = true;
    return app;
}

inline InstalledApp unmeasuredApp(std::string name) {
    InstalledApp app = measuredApp(std::move(name), 0);
    app.isMeasured = false;
    return app;
}

inline LeftoverItem leftover(const std::string& path, std::string category, Bytes bytes) {
    LeftoverItem item;
    item.url = FileURL(path);
    item.category = std::move(category);
    item.confidence = LeftoverItem::Confidence::high;
    item.bytes = bytes;
    return item;
}

} // namespace quillane
