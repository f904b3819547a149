#pragma once
#include "Descriptor.h"
#include "FileURL.h"
#include "Result.h"
#include <string>
#include <sys/types.h>

namespace quillane {

// An open Trash of a Linux desktop: its two folders, and where it lies. Links are followed above it only: one in
// its place, or in the place of a part of it, leads elsewhere, and what lies there was never trashed.
struct TrashBin {
    Descriptor files;
    Descriptor info;
    std::string path;    // of the Trash itself
    std::string topPath; // of its volume; empty for the home Trash, whose records hold whole paths
};

namespace TrashBins {

// A folder below an open one. A link is refused. Empty, with errno set, when it can't be opened.
Descriptor openFolderAt(int folder, const std::string& name);

// The Trash itself, in the data folder of the user; nothing is made. Empty, with errno set, when it can't be
// opened: ENOENT when there is none yet.
Descriptor openHome(const std::string& dataHome);
// The home Trash, made where it is missing.
Result<TrashBin> makeHome(const std::string& dataHome);

// The Trash of a user at the top of the volume that holds `folder`, an existing path without links. Made where
// it is missing. ErrorCode::kFeatureUnsupported where something else is in its place.
Result<TrashBin> makeOnVolume(const std::string& folder, uid_t user);
// The Trash of a user at `path`, when it lies as one of a volume does. Nothing is made. Fails with EINVAL for
// any other path.
Result<Descriptor> openOnVolume(const std::string& path, uid_t user);

// The folder below which the records of a Trash at this path may name places: the top of its volume, or for the home
// Trash the data folder.
FileURL holderOf(const FileURL& trash);

} // namespace TrashBins
} // namespace quillane
