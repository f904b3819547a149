#pragma once
#include "Result.h"
#include <string>
#include <sys/types.h>

// The only source that deletes. Called for what lies in the Trash, for records of the Trash, for temporary files of
// our own, and for the room that is kept for a full disk.
namespace quillane::FileRemover {

// Deletes one file or link.
Result<> removeFile(int folder, const std::string& name);

// Deletes an entry with all it holds, on open folders: links are deleted and never followed, whoever swaps
// what under us. Never leaves the volume and the mount of `folder`: where something else is mounted on the entry or
// inside it, nothing of the entry is deleted and the error is EXDEV. What is mounted only after the work has begun
// ends it with EXDEV where it is met.
// Neither the stack nor the open descriptors grow with the depth. Stops at the first failure; what went before
// stays deleted.
Result<> removeTree(int folder, const std::string& name);

// Cuts an open file of our own making; what lies beyond `size` is gone.
Result<> shorten(int file, off_t size);

} // namespace quillane::FileRemover
