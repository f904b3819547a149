#include "FileMover.h"
#include "PosixError.h"
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stdio.h>

namespace quillane::FileMover {

const int kOpenUnlisted = O_SEARCH;

Result<> move(int fromFolder, const std::string& fromName, int toFolder, const std::string& toName) {
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
