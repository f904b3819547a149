#pragma once
#include "Result.h"
#include <cstddef>
#include <string>
#include <string_view>

// Files that are whole or not there: written to a temporary name beside the old one, synced, and renamed.
namespace quillane::AtomicFile {

// Writes `bytes` to the file at this path of the machine. A crash at any moment leaves the old or the new
// content, never a part; a temporary file that a crash left behind is never read. The folder must exist. The
// file is readable by its owner alone. A link stays, and the file to which it leads is written, also when it is
// missing. What is there and is no file of bytes, a folder or a device, is never replaced.
Result<> write(const std::string& path, std::string_view bytes);

// Writes one byte of a file over, in place and synced: for a disk that has no room for a new file. It can't be half
// done. A link is followed. Fails for what is no file of bytes or ends before `offset`.
Result<> writeByte(const std::string& path, std::size_t offset, char byte);

// Makes the folders above a file, for the user alone, where they are missing.
void makeFoldersAbove(const std::string& path);

} // namespace quillane::AtomicFile
