#pragma once
#include "FileCall.h"
#include "FileSystem.h"
#include <map>
#include <mutex>
#include <optional>
#include <set>

namespace quillane {

// Another file system with failures laid over it. Without any it answers exactly as the other does.
// Failures are laid before the calls they are meant for, or from a hook; any thread.
class FaultFileSystem final : public FileSystem {
  public:
    explicit FaultFileSystem(const FileSystem& other)
        : m_other(other) {}

    // Every call of this kind fails.
    void failEvery(FileCall call, PlatformError error);
    // The n-th call of this kind from now on fails, counted from 1, and no other.
    void failNth(FileCall call, int n, PlatformError error);
    // Every call for this very path fails.
    void failAt(const FileURL& url, PlatformError error);
    // A folder whose content can't be read: listing and walking it fail, a walk from above tells it and goes on.
    void deny(const FileURL& folder);
    // Still named by its folder, but gone when it is touched, as when it is removed between the two.
    void vanish(const FileURL& url);

    FileURL home() const override { return m_other.home(); }
    bool exists(const FileURL& url) const override;
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override;
    Result<ResourceValues> resourceValues(const FileURL& url) const override;
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override;
    Result<std::string> read(const FileURL& url, std::size_t limit) const override;
    FileURL resolvingSymlinks(const FileURL& url) const override { return m_other.resolvingSymlinks(url); }
    FileURL standardized(const FileURL& url) const override { return m_other.standardized(url); }

  private:
    struct Nth {
        int left = 0;
        PlatformError error;
    };
    std::optional<PlatformError> failure(FileCall call, const FileURL& url) const;
    bool isDenied(const FileURL& url) const;
    // Whether this or a folder above it has vanished.
    bool isGone(const FileURL& url) const;

    const FileSystem& m_other;
    mutable std::mutex m_mutex; // guards all below
    std::map<FileCall, PlatformError> m_every;
    mutable std::map<FileCall, Nth> m_nth;
    std::map<FileURL, PlatformError> m_at;
    std::set<FileURL> m_denied;
    std::set<FileURL> m_gone;
};

} // namespace quillane
