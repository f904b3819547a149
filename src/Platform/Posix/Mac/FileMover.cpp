#include "FileMover.h"
#include "CloudFetching.h"
#include "PosixError.h"
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stdio.h>

namespace quillane::FileMover {

const int kOpenUnlisted = O_SEARCH;

// Where a file system knows no move that overwrites nothing, it fails. The system may have to fetch what
// lies in a cloud alone before it leaves that. (RENAME_NOFOLLOW_ANY would refuse a link, which is moved as a link.)
Result<> move(int fromFolder, const std::string& fromName, int toFolder, const std::string& toName) {
    const CloudFetching::Allowed fetches;
    if (::renameatx_np(fromFolder, fromName.c_str(), toFolder, toName.c_str(), RENAME_EXCL) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

Result<> replace(int folder, const std::string& temporaryName, const std::string& name) {
    if (::renameat(folder, temporaryName.c_str(), folder, name.c_str()) != 0) {
        return PosixError::writing(errno);
    }
    return success();
}

} // namespace quillane::FileMover
