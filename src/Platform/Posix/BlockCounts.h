#pragma once
#include "FileSystem.h"
#include <cstdint>
#include <optional>

namespace quillane {

// What a volume tells of its room, in its own blocks.
struct BlockCounts {
    std::uint64_t blockSize = 0; // in bytes: the unit of the others
    std::uint64_t blocks = 0;
    std::uint64_t available = 0; // to an ordinary user: what is kept back for the administrator is not in it
    // To an ordinary user as well. Nothing where files are not counted, or only by the room that is free.
    std::optional<std::uint64_t> availableFiles = {};

    // Of the volume on which an open file or folder lies. Empty, with errno set, when it can't be asked. Each
    // system's own.
    static std::optional<BlockCounts> ofVolumeOf(int descriptor);

    // The same in bytes.
    Result<VolumeSpace> space() const;
    bool hasRoomFor(std::uint64_t bytes) const;
    // Where that is what is missing, room is of no use.
    bool mayHoldMoreFiles() const { return !availableFiles || *availableFiles > 0; }
};

} // namespace quillane
