#include "FileMover.h"
#include "CloudFetching.h"
#include <cstdio>
#include <fcntl.h>
#include <sys/stdio.h>

namespace quillane::FileMover {

const int kOpenUnlisted = O_SEARCH;

// Where a file system knows no move that overwrites nothing, it fails. The system may have to fetch what
// lies in a cloud alone before it leaves that. (RENAME_NOFOLLOW_ANY would refuse a link, which is moved as a link.)
bool renameToFree(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    const CloudFetching::Allowed fetches;
    return ::renameatx_np(fromFolder, fromName, toFolder, toName, RENAME_EXCL) == 0;
}

} // namespace quillane::FileMover
