#pragma once
#include "FileSystem.h"
#include "RootFolder.h"
#include <memory>
#include <string>

namespace quillane {

// Files and folders by POSIX calls: of the machine, or of a volume that is a folder of the machine. Any thread.
class PosixFileSystem final : public FileSystem {
  public:
    // The machine's own root; the home folder is $HOME, else the account's.
    PosixFileSystem();
    // The volume below `hostFolder`; `home` is a path of that volume. No path of it leads out.
    PosixFileSystem(const std::string& hostFolder, FileURL home);

    FileURL home() const override { return m_home; }
    bool exists(const FileURL& url) const override;
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override;
    Result<ResourceValues> resourceValues(const FileURL& url) const override;
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override;
    Result<std::string> read(const FileURL& url, std::size_t limit) const override;
    FileURL resolvingSymlinks(const FileURL& url) const override;
    FileURL standardized(const FileURL& url) const override;
    Result<> createDirectories(const FileURL& url) override;

  private:
    std::optional<std::string> resolved(const std::string& path) const;
    std::string withoutPrivatePrefix(std::string path) const;

    RootFolder m_root;
    FileURL m_home;
};

} // namespace quillane
