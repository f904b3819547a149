#include "FaultFileSystem.h"
#include "WalkedPaths.h"
#include <cerrno>

namespace quillane {
namespace {

constexpr PlatformError kGone = {ErrorCode::kReadNoSuchFile, ENOENT};
constexpr PlatformError kDenied = {ErrorCode::kReadNoPermission, EACCES};

} // namespace

void FaultFileSystem::failEvery(FileCall call, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_every[call] = error;
}

void FaultFileSystem::failNth(FileCall call, int n, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_nth[call] = {n, error};
}

void FaultFileSystem::failAt(const FileURL& url, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_at[url] = error;
}

void FaultFileSystem::deny(const FileURL& folder) {
    const std::lock_guard lock(m_mutex);
    m_denied.insert(folder);
}

void FaultFileSystem::vanish(const FileURL& url) {
    const std::lock_guard lock(m_mutex);
    m_gone.insert(url);
}

bool FaultFileSystem::isDenied(const FileURL& url) const {
    const std::lock_guard lock(m_mutex);
    return m_denied.contains(url);
}

bool FaultFileSystem::isGone(const FileURL& url) const {
    const std::lock_guard lock(m_mutex);
    for (FileURL at = url; !m_gone.empty(); at = at.deletingLastPathComponent()) {
        if (m_gone.contains(at)) {
            return true;
        }
        if (at.path() == "/") {
            break;
        }
    }
    return false;
}

std::optional<PlatformError> FaultFileSystem::failure(FileCall call, const FileURL& url) const {
    if (isGone(url)) {
        return kGone;
    }
    const std::lock_guard lock(m_mutex);
    if (const auto nth = m_nth.find(call); nth != m_nth.end() && --nth->second.left == 0) {
        const auto error = nth->second.error;
        m_nth.erase(nth);
        return error;
    }
    if (const auto every = m_every.find(call); every != m_every.end()) {
        return every->second;
    }
    if (const auto at = m_at.find(url); at != m_at.end()) {
        return at->second;
    }
    if ((call == FileCall::list || call == FileCall::walk) && m_denied.contains(url)) {
        return kDenied;
    }
    return std::nullopt;
}

bool FaultFileSystem::exists(const FileURL& url) const {
    return !failure(FileCall::exists, url) && m_other.exists(url);
}

Result<std::vector<DirectoryEntry>> FaultFileSystem::list(const FileURL& folder) const {
    if (const auto error = failure(FileCall::list, folder)) {
        return *error;
    }
    return m_other.list(folder);
}

Result<ResourceValues> FaultFileSystem::resourceValues(const FileURL& url) const {
    if (const auto error = failure(FileCall::resourceValues, url)) {
        return *error;
    }
    return m_other.resourceValues(url);
}

Result<> FaultFileSystem::walk(const FileURL& root, WalkOptions options, Visitor visit) const {
    if (const auto error = failure(FileCall::walk, root)) {
        return *error;
    }
    WalkedPaths paths(root);
    return m_other.walk(root, options, [&](const WalkEntry& entry) {
        const FileURL url = paths.told(entry);
        const bool gone = isGone(url);
        WalkEntry told = entry;
        told.allocated = gone ? 0 : entry.allocated;
        const auto answer = visit(told);
        const bool closed = entry.type == EntryType::directory && (gone || isDenied(url));
        return closed && answer == WalkAnswer::proceed ? WalkAnswer::skipBelow : answer;
    });
}

Result<std::string> FaultFileSystem::read(const FileURL& url, std::size_t limit) const {
    if (const auto error = failure(FileCall::read, url)) {
        return *error;
    }
    return m_other.read(url, limit);
}

} // namespace quillane
