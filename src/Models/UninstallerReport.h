#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Hashing.h"
#include "Result.h"
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// Where an item lived and where the Trash put it.
struct TrashMove {
    FileURL from;
    FileURL to;
    friend bool operator==(const TrashMove&, const TrashMove&) = default;
};

namespace Uninstaller {

// One path that could not be handled. Its identity is `url`.
struct Failure {
    FileURL url;                 // the path that failed; after a put back, the original location
    std::string reason;          // short words for the user
    bool isAccessDenied = false; // the system refused access: Full Disk Access may cure it

    // "No access" for a refusal, told by codes alone, and "Failed" for everything else.
    static Failure fromError(FileURL url, const PlatformError& error);
    friend bool operator==(const Failure&, const Failure&) = default;
};

// What one call of Uninstaller or TrashSweeper did.
struct Report {
    std::vector<FileURL> trashed;  // handled: moved to the Trash, deleted from it, or put back
    std::vector<TrashMove> moves;  // what can be undone; filled only by a move to the Trash
    std::vector<Failure> failures; // in order
    Bytes reclaimedBytes = 0;      // the sizes of `trashed`; always 0 after a put back

    // One to three lines: "<verb> <n> item(s) <destination>, reclaiming <size>." and what failed.
    std::string summary(std::string_view verb, std::string_view destination) const;
    friend bool operator==(const Report&, const Report&) = default;
};

} // namespace Uninstaller
} // namespace quillane

template <>
struct std::hash<quillane::TrashMove> {
    std::size_t operator()(const quillane::TrashMove& move) const noexcept {
        return quillane::hashOf(move.from, move.to);
    }
};
