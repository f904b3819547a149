#pragma once
#include "FileSystem.h"

namespace quillane {

// A file system on which nothing lies and every path is in its standard form. The base of those that a target
// makes up.
class SettledFiles : public FileSystem {
  public:
    FileURL home() const override { return FileURL("/Users/anna"); }
    bool exists(const FileURL&) const override { return false; }
    Result<std::vector<DirectoryEntry>> list(const FileURL&) const override { return kMissing; }
    Result<ResourceValues> resourceValues(const FileURL&) const override { return kMissing; }
    Result<VolumeSpace> volumeSpace(const FileURL&) const override { return kMissing; }
    Result<> walk(const FileURL&, WalkOptions, Visitor) const override { return kMissing; }
    Result<std::string> read(const FileURL&, std::size_t) const override { return kMissing; }
    Result<std::string> extendedAttribute(const FileURL&, const std::string&, std::size_t) const override {
        return kMissing;
    }
    bool isAwaitingDownload(const FileURL&) const override { return false; }
    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL&) const override { return kMissing; }
    FileURL resolvingSymlinks(const FileURL& url) const override { return url; }
    FileURL standardized(const FileURL& url) const override { return url; }
    Result<> createDirectories(const FileURL&) override { return kMissing; }

  protected:
    static constexpr PlatformError kMissing{ErrorCode::kReadNoSuchFile, std::nullopt};
};

} // namespace quillane
