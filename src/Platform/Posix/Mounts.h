#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>

// Where volumes and mounts begin, for what must not leave its own. Two mounts may show one volume, and then only
// the mount tells them apart.
namespace quillane::Mounts {

// The volume of an open folder, and the mount through which it was opened.
struct Place {
    dev_t device = 0;
    std::uint64_t mount = 0; // the same for all folders where the system doesn't number its mounts

    friend bool operator==(const Place&, const Place&) = default;
};

// An open folder and no other, as long as it exists.
struct Identity {
    Place place;
    ino_t inode = 0;

    friend bool operator==(const Identity&, const Identity&) = default;
};

// Empty, with errno set, when the folder can't be asked.
std::optional<Identity> identityOf(int folder);

// Whether the system lists something as mounted on this entry of an open folder, or anywhere below it. False also
// when the list can't be read, and for what is mounted after the look: ask identityOf() of what was entered, too.
bool isAnyAtOrBelow(int folder, const std::string& name);

} // namespace quillane::Mounts
