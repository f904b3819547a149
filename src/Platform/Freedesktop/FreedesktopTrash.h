#pragma once
#include "Clock.h"
#include "Descriptor.h"
#include "Trash.h"
#include <string>
#include <sys/types.h>

namespace quillane {

// The Trash of Linux desktops: one in the home volume's data folder, and one at the top of each other volume,
// each with the items in "files" and a record for each item in "info". The record is written before the move
// and withdrawn when the move fails. Nothing crosses a volume: where a volume can have no Trash, a move fails.
class FreedesktopTrash final : public Trash {
  public:
    struct Places {
        std::string dataHome; // $XDG_DATA_HOME, else ~/.local/share
        uid_t user = 0;
        // From the environment and the account of this process.
        static Places ofThisUser(const FileURL& home);
    };

    // `clock` gives the time of the records and must outlive the Trash.
    FreedesktopTrash(Places places, const Clock& clock);

    // The "files" folder of the home Trash.
    std::optional<FileURL> location() const override;
    Result<std::vector<FileURL>> items() const override;
    Result<std::optional<FileURL>> moveToTrash(const FileURL& url) override;
    Result<> moveOut(const FileURL& inTrash, const FileURL& original) override;
    Result<> deleteItem(const FileURL& inTrash) override;

  private:
    // An open Trash: its folders, and where it lies.
    struct Bin {
        Descriptor files;
        Descriptor info;
        std::string path;    // of the Trash itself
        std::string topPath; // of its volume; empty for the home Trash, whose records hold whole paths
    };

    Result<Bin> homeBin() const;
    Result<Bin> volumeBin(const FileURL& url, int parent) const;
    Result<std::optional<FileURL>> moveInto(const Bin& bin, int parent, const FileURL& url) const;
    Result<Descriptor> openInfoBeside(const Descriptor& files) const;
    bool isTrashFilesFolder(const FileURL& folder) const;

    Places m_places;
    const Clock& m_clock;
};

} // namespace quillane
