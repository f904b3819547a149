#pragma once
#include "Descriptor.h"
#include "FileURL.h"
#include "Result.h"
#include "Volume.h"
#include <string>
#include <vector>

// What every Trash that is a folder does alike, on open folders.
namespace quillane::TrashFolder {

// Longest name of an entry that file systems take, in bytes.
inline constexpr std::size_t kMaxNameBytes = 255;
// Names that are tried before a move is given up.
inline constexpr int kMaxAttempts = 100000;

// The entries of an open folder as locations below `folder`, hidden ones included.
Result<std::vector<FileURL>> items(Descriptor folder, const FileURL& folderURL);

// False also when the folder, which nobody has read from yet, can't be listed. Reads no more than it must.
bool isEmpty(int folder);

// Whether the open folder is the highest of its volume.
bool isTopOfVolume(int folder);

// Whether the system would read less of the path than it holds, and reach another item: it ends at the first NUL.
bool endsEarly(const FileURL& url);

// True when `url` is a direct entry of `folder` with an ordinary name.
bool holdsDirectly(const FileURL& folder, const FileURL& url);

// Moves an item out of the open Trash to a place of the volume, whose folder must exist; never overwrites.
Result<> moveOut(int trash, const FileURL& inTrash, const Volume& volume, const FileURL& original);

// Opens a folder of the volume to move entries of it, which needs no right to list it. Links above it are followed.
Descriptor openForMoving(const Volume& volume, const FileURL& folder, LastLink lastLink);

} // namespace quillane::TrashFolder
