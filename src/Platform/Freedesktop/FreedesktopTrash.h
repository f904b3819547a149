#pragma once
#include "Clock.h"
#include "Trash.h"
#include "TrashBin.h"
#include <string>
#include <sys/types.h>

struct stat;

namespace quillane {

class SpaceReserve;

// The Trash of Linux desktops: one in the home volume's data folder, and one at the top of each other volume,
// each with the items in "files" and a record for each item in "info". The record is written before the move
// and withdrawn when the move fails. Nothing crosses a volume: where a volume can have no Trash, a move fails. A
// link in the place of a Trash is refused. Deleting the last item also deletes what a crash can leave: records
// without an item, once they are older than any move takes.
class FreedesktopTrash final : public Trash {
  public:
    struct Places {
        std::string dataHome; // $XDG_DATA_HOME, else ~/.local/share
        uid_t user = 0;
        // From the environment and the account of this process.
        static Places ofThisUser(const FileURL& home);
    };

    // `clock` gives the time of the records. It and the reserve, if any, must outlive the Trash. Where the volume
    // of the reserve is full, moves draw on it, and it is laid again as moves and deletions find room.
    FreedesktopTrash(Places places, const Clock& clock, SpaceReserve* reserve = nullptr);

    // The "files" folder of the home Trash.
    std::optional<FileURL> location() const override;
    Result<std::vector<FileURL>> items() const override;
    Result<std::optional<FileURL>> moveToTrash(const FileURL& url) override;
    // Each item has a record, on the disk before it moves and withdrawn after it left. One without a record is
    // somebody else's, or another hand was at the records: it came from nowhere that is known.
    Result<bool> cameFrom(const FileURL& inTrash, const FileURL& original) const override;
    Result<> moveOut(const FileURL& inTrash, const FileURL& original) override;
    Result<> deleteItem(const FileURL& inTrash) override;

  private:
    std::string homePath() const { return m_places.dataHome + "/Trash"; }
    Result<std::optional<FileURL>> moveInto(const TrashBin& bin, int parent, const FileURL& url) const;
    Result<std::optional<FileURL>> moveFrom(int parent, const struct stat& folder, const FileURL& url) const;
    Result<std::optional<FileURL>> moveIntoVolume(int parent, const FileURL& url) const;
    Result<Descriptor> openTrash(const FileURL& filesFolder) const;
    void removeOldStrays(int files, const Descriptor& info) const;

    Places m_places;
    const Clock& m_clock;
    SpaceReserve* m_reserve;
};

} // namespace quillane
