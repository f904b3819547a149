#pragma once
#include "Result.h"
#include <string>
#include <string_view>

// Files that are whole or not there: written to a temporary name beside the old one, synced, and renamed.
namespace quillane::AtomicFile {

// Writes `bytes` to the file at this path of the machine. A crash at any moment leaves the old or the new
// content, never a part; a temporary file that a crash left behind is never read. The folder must exist. The
// file is readable by its owner alone. A link stays, and the file to which it leads is written, also when it is
// missing. What is there and is no file of bytes, a folder or a device, is never replaced.
Result<> write(const std::string& path, std::string_view bytes);

} // namespace quillane::AtomicFile
