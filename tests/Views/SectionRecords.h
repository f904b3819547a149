#pragma once
#include "DevCacheItem.h"
#include "DuplicateGroup.h"
#include "OrphanItem.h"
#include "StartupItem.h"
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// Records as the finders would build them, for tests that need no disk.
inline OrphanItem orphan(const std::string& identifier, const std::string& vendor, Bytes bytes,
                         const std::string& category = "Caches") {
    OrphanItem item;
    item.url = FileURL("/Users/alex/Library/" + category + "/" + identifier);
    item.category = category;
    item.identifier = identifier;
    item.vendor = vendor;
    item.bytes = bytes;
    return item;
}

// One that lies outside the user's home folder.
inline OrphanItem adminOrphan(const std::string& identifier, const std::string& vendor, Bytes bytes) {
    OrphanItem item = orphan(identifier, vendor, bytes, "Privileged Helper");
    item.url = FileURL("/Library/PrivilegedHelperTools/" + identifier);
    item.requiresAdmin = true;
    return item;
}

inline DevCacheItem devCache(const std::string& tool, const std::string& kind, Bytes bytes,
                             bool safeToSweep = true) {
    DevCacheItem item;
    item.url = FileURL("/Users/alex/Library/" + tool + "/" + kind);
    item.tool = tool;
    item.kind = kind;
    item.bytes = bytes;
    item.safeToSweep = safeToSweep;
    item.consequence = "Made again when it is needed.";
    return item;
}

// Below the user's home folder.
inline UserFile copyAt(const std::string& path, std::optional<Date> lastUsed = std::nullopt) {
    UserFile file;
    file.url = FileURL("/Users/alex/" + path);
    file.kind = UserFile::kindOf(file.url);
    file.lastUsed = lastUsed;
    return file;
}

// Below the user's home folder; as long as it is large.
inline UserFile fileAt(const std::string& path, Bytes bytes, std::optional<Date> lastUsed = std::nullopt) {
    UserFile file = copyAt(path, lastUsed);
    file.bytes = bytes;
    file.logicalBytes = bytes;
    return file;
}

inline DuplicateGroup copies(const std::string& id, Bytes bytesEach, std::vector<UserFile> files) {
    for (auto& file : files) {
        file.bytes = bytesEach;
        file.logicalBytes = bytesEach;
    }
    return {id, std::move(files), bytesEach};
}

// An agent of the user's own, at home.
inline StartupItem startupItem(const std::string& label, StartupItem::Health health,
                               std::optional<std::string> owner = std::nullopt) {
    StartupItem item;
    item.url = FileURL("/Users/alex/Library/LaunchAgents/" + label + ".plist");
    item.label = label;
    item.health = health;
    item.ownerName = std::move(owner);
    item.isLoaded = false;
    item.bytes = 600;
    return item;
}

// A daemon of the machine's.
inline StartupItem startupDaemon(const std::string& label, StartupItem::Health health,
                                 std::optional<std::string> owner = std::nullopt) {
    StartupItem item = startupItem(label, health, std::move(owner));
    item.url = FileURL("/Library/LaunchDaemons/" + label + ".plist");
    item.kind = StartupItem::Kind::daemon;
    item.isLoaded.reset();
    return item;
}

} // namespace quillane
