#pragma once
#include "FileSystem.h"
#include "Volume.h"

namespace quillane {

class SpaceReserve;

// Files and folders through POSIX calls: those of the machine, or those of a volume that lies in one of its
// folders. The same code serves both; only where a path begins differs.
class PosixFileSystem final : public FileSystem {
  public:
    // The machine's own files, and the home folder that UserHome::path() tells. Reads the environment, so it is made
    // before other threads run.
    PosixFileSystem();
    // The volume that begins at `folder`, a path of the machine. `home` is a path inside the volume. No path
    // leads out of the folder.
    PosixFileSystem(const std::string& folder, FileURL home);

    FileURL home() const override { return m_home; }
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
    FileURL resolvingSymlinks(const FileURL& url) const override;
    FileURL standardized(const FileURL& url) const override;
    Result<> createDirectories(const FileURL& url) override;

    // From now on folders that a full volume has no room for are made with the reserve. It outlives the file system;
    // set before other threads run.
    void drawOn(SpaceReserve& reserve) { m_reserve = &reserve; }

    // The path of the machine for a path of the volume, for what must hand a path to another program, such as
    // showing a file of the sample. Equal to the path where nothing is rooted. Links before the last component
    // are resolved inside the volume at this moment only: nothing that moves or deletes goes by it.
    std::string hostPath(const FileURL& url) const;

  private:
    Result<> makeFolders(const std::string& path);
    int makeFolder(const std::string& path, const std::string& name);
    std::string droppingAliasPrefixes(std::string path) const;

    Volume m_volume;
    FileURL m_home;
    SpaceReserve* m_reserve = nullptr;
};

} // namespace quillane
