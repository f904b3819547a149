#pragma once
#include "Descriptor.h"
#include "FileURL.h"
#include "Result.h"
#include <sys/types.h>

// Where macOS keeps what a user has trashed and what does not lie in ".Trash" of the home folder.
namespace quillane::OtherTrashes {

// Opens such a folder: "TOP/.Trashes/USER" of a volume that is mounted on TOP, or ".Trash" somewhere below the folders
// of `home` in which the system shows the clouds. Links are followed above ".Trashes" and ".Trash" only. Fails with
// EINVAL for a path of any other form, below the top of a volume too, and for another user's folder.
Result<Descriptor> open(const FileURL& folder, const FileURL& home, uid_t user);

} // namespace quillane::OtherTrashes
