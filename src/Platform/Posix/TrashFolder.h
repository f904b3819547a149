#pragma once
#include "Descriptor.h"
#include "FileURL.h"
#include "Result.h"
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

// True when `url` is a direct entry of `folder` with an ordinary name.
bool holdsDirectly(const FileURL& folder, const FileURL& url);

} // namespace quillane::TrashFolder
