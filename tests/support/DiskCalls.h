#pragma once
#include <cstdint>
#include <string>
#include <string_view>

// What each system does in its own way for files that a test lays.
namespace quillane {

// Gives an open file so many bytes of the disk, from its start, and makes it as long at least. 0, or the error.
int allocateOnDisk(int fd, std::int64_t bytes);

// Gives a file an extended attribute of a program's own. 0, or the error, ENOTSUP where the volume keeps none.
int setAttribute(const std::string& path, const std::string& name, std::string_view value);

} // namespace quillane
