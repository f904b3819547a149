#include "FileMover.h"
#include <cstdio>
#include <fcntl.h>

namespace quillane::FileMover {

const int kOpenUnlisted = O_PATH | O_DIRECTORY;

bool renameToFree(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    return ::renameat2(fromFolder, fromName, toFolder, toName, RENAME_NOREPLACE) == 0;
}

} // namespace quillane::FileMover
