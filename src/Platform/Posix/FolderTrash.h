#pragma once
#include "Trash.h"
#include "Volume.h"
#include <string>

namespace quillane {

// A Trash that is one plain folder of the volume, ".Trash" of the home folder, without records. What the
// sample Mac has.
class FolderTrash final : public Trash {
  public:
    // The folder is made at the first move when it does not exist.
    FolderTrash(const std::string& hostRoot, FileURL home);

    std::optional<FileURL> location() const override;
    Result<std::vector<FileURL>> items() const override;
    Result<std::optional<FileURL>> moveToTrash(const FileURL& url) override;
    // Always true: there are no records.
    Result<bool> cameFrom(const FileURL& inTrash, const FileURL& original) const override;
    Result<> moveOut(const FileURL& inTrash, const FileURL& original) override;
    Result<> deleteItem(const FileURL& inTrash) override;

  private:
    Result<Descriptor> openForMoving();

    Volume m_root;
    FileURL m_home;
    FileURL m_folder;
};

} // namespace quillane
