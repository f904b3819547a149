#pragma once
#include "FileCall.h"
#include "ForwardingFileSystem.h"
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

namespace quillane {

// A file system in which chosen calls fail, and which can do something when a path is touched: take a file
// away between a listing and a reading, for one. Without any of that it answers exactly as the other does.
// Calls may come from any thread; hooks are set before use.
class FaultFileSystem final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    // Every call on this very path fails so; a walk from above still tells it. A file that is open already is
    // read as before.
    void fail(const FileURL& url, PlatformError error);
    // Every call of this kind fails so.
    void failEvery(FileCall call, PlatformError error);
    // The n-th call of this kind from now on fails so, counted from 1, and no other.
    void failNth(FileCall call, int n, PlatformError error);
    // The file opens, and every read that would take this byte fails so: what lies before it can be read.
    void failReadingAt(const FileURL& url, Bytes byte, PlatformError error);
    // A folder whose content can't be read: listing and walking it fail, a walk from above tells it and goes on.
    void deny(const FileURL& folder);
    // Still named by its folder but gone, with all below it, when it is touched: as when it is removed between
    // the two.
    void vanish(const FileURL& url);
    // From now on the system has the content of this file in its cloud alone.
    void sendToTheCloud(const FileURL& url);
    // As the system of a Mac flags an item whose name does not hide it, and as the Finder marks a folder.
    void flagHidden(const FileURL& url);
    void markAsPackage(const FileURL& folder);
    // From now on every volume has this much room.
    void pretendSpace(VolumeSpace space);
    // Called before each call on this path.
    void before(const FileURL& url, std::function<void()> hook) { m_hooks[url] = std::move(hook); }
    // The paths that were listed, walked, read or asked about, in their order.
    std::vector<FileURL> touched() const;

    bool exists(const FileURL& url) const override;
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override;
    Result<ResourceValues> resourceValues(const FileURL& url) const override;
    Result<VolumeSpace> volumeSpace(const FileURL& folder) const override;
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override;
    Result<std::string> read(const FileURL& url, std::size_t limit) const override;
    Result<std::string> extendedAttribute(const FileURL& url, const std::string& name,
                                          std::size_t limit) const override;
    bool isAwaitingDownload(const FileURL& url) const override;
    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const override;
    Result<> createDirectories(const FileURL& url) override;

  private:
    class FaultyFile;
    struct Nth {
        int left = 0;
        PlatformError error;
    };
    // Notes the call and tells how it fails, if it does.
    std::optional<PlatformError> touch(FileCall call, const FileURL& url) const;
    std::optional<PlatformError> failure(FileCall call, const FileURL& url) const;
    // How a call of this kind fails whatever it is made on, if it does. Counts the call.
    std::optional<PlatformError> plannedFailure(FileCall call) const;
    // How reading these bytes of an open file fails, if it does.
    std::optional<PlatformError> readFailure(const FileURL& url, Bytes offset, std::size_t length) const;
    bool isDenied(const FileURL& url) const;
    bool isOneOf(const std::set<FileURL>& urls, const FileURL& url) const;
    // Whether this or a folder above it has vanished.
    bool isGone(const FileURL& url) const;

    std::map<FileURL, std::function<void()>> m_hooks;
    mutable std::mutex m_mutex; // guards all below
    std::map<FileURL, PlatformError> m_errors;
    std::map<FileCall, PlatformError> m_every;
    mutable std::map<FileCall, Nth> m_nth;
    struct BadByte {
        Bytes byte = 0;
        PlatformError error;
    };
    std::map<FileURL, BadByte> m_badBytes;
    std::set<FileURL> m_denied;
    std::set<FileURL> m_gone;
    std::set<FileURL> m_inTheCloud;
    std::set<FileURL> m_hidden;
    std::set<FileURL> m_packages;
    std::optional<VolumeSpace> m_space;
    mutable std::vector<FileURL> m_touched;
};

} // namespace quillane
