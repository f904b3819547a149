#pragma once
#include "FileURL.h"
#include "Result.h"
#include <optional>
#include <vector>

namespace quillane {

// The system's Trash. The only door through which anything is moved or deleted. Every step works on open
// descriptors of parent folders and never follows a link in the last component; nothing is ever copied
// across volumes, and a failed move never becomes a deletion. All calls block; any thread but the main one.
class Trash {
  public:
    virtual ~Trash() = default;

    // The folder that holds what the user trashed on the home volume; nothing when there is none yet.
    virtual std::optional<FileURL> location() const = 0;

    // The top-level items of location(), hidden ones included, in no promised order. Empty when there is no
    // Trash. Fails when the listing is refused.
    virtual Result<std::vector<FileURL>> items() const = 0;

    // Moves one item, a link as a link, into the Trash of its volume under a name that is free there. The
    // value is where it landed, or nothing when the system doesn't say.
    virtual Result<std::optional<FileURL>> moveToTrash(const FileURL& url) = 0;

    // Whether what lies at `inTrash` came from `original`. False when the record that the Trash keeps of the item
    // names another place, and where each item has a record, also when this one has none. True in a Trash without
    // records, where nobody can know: the plain folder has none, and those that the Finder keeps are no business of
    // programs. Fails when the record can't be read, and for what does not lie directly in a Trash with records.
    virtual Result<bool> cameFrom(const FileURL& inTrash, const FileURL& original) const = 0;

    // Moves what the Trash holds at `inTrash` to `original`, whose parent must exist; never overwrites. Leaves
    // no record of the item in the Trash. Refuses what does not lie directly in a Trash.
    virtual Result<> moveOut(const FileURL& inTrash, const FileURL& original) = 0;

    // Deletes one top-level item of location() with all it holds, links as links. Refuses anything else. Never leaves
    // the volume and the mount of location(): an item in which something else is mounted fails with EXDEV and stays
    // whole.
    virtual Result<> deleteItem(const FileURL& inTrash) = 0;
};

} // namespace quillane
