#pragma once
#include "FileSystem.h"

namespace quillane {

// Hands every call to another file system. The base of what changes or records a few of them.
class ForwardingFileSystem : public FileSystem {
  public:
    explicit ForwardingFileSystem(FileSystem& files)
        : m_files(files) {}

    FileURL home() const override { return m_files.home(); }
    bool exists(const FileURL& url) const override { return m_files.exists(url); }
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override {
        return m_files.list(folder);
    }
    Result<ResourceValues> resourceValues(const FileURL& url) const override {
        return m_files.resourceValues(url);
    }
    Result<VolumeSpace> volumeSpace(const FileURL& folder) const override {
        return m_files.volumeSpace(folder);
    }
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override {
        return m_files.walk(root, options, visit);
    }
    Result<std::string> read(const FileURL& url, std::size_t limit) const override {
        return m_files.read(url, limit);
    }
    Result<std::string> extendedAttribute(const FileURL& url, const std::string& name,
                                          std::size_t limit) const override {
        return m_files.extendedAttribute(url, name, limit);
    }
    bool isAwaitingDownload(const FileURL& url) const override { return m_files.isAwaitingDownload(url); }
    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const override {
        return m_files.openForReading(url);
    }
    FileURL resolvingSymlinks(const FileURL& url) const override { return m_files.resolvingSymlinks(url); }
    FileURL standardized(const FileURL& url) const override { return m_files.standardized(url); }
    Result<> createDirectories(const FileURL& url) override { return m_files.createDirectories(url); }

  private:
    FileSystem& m_files;
};

} // namespace quillane
