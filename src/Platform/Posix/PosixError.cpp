#include "PosixError.h"
#include <cerrno>

namespace quillane {
namespace {

int readingCode(int errnoValue) {
    switch (errnoValue) {
    case EPERM:
    case EACCES:
        return ErrorCode::kReadNoPermission;
    case ENOENT:
        return ErrorCode::kReadNoSuchFile;
    case ENAMETOOLONG:
        return ErrorCode::kReadInvalidName;
    case EFBIG:
        return ErrorCode::kReadTooLarge;
    default:
        return ErrorCode::kReadUnknown;
    }
}

int writingCode(int errnoValue) {
    switch (errnoValue) {
    case EPERM:
    case EACCES:
        return ErrorCode::kWriteNoPermission;
    case ENOENT:
        return ErrorCode::kNoSuchFileWriting;
    case ENAMETOOLONG:
        return ErrorCode::kWriteInvalidName;
    case EEXIST:
        return ErrorCode::kWriteFileExists;
    case ENOSPC:
    case EDQUOT:
        return ErrorCode::kWriteNoSpace;
    case EROFS:
        return ErrorCode::kWriteReadOnlyVolume;
    default:
        return ErrorCode::kWriteUnknown;
    }
}

} // namespace

PlatformError posixError(int errnoValue, Attempt attempt) {
    return {attempt == Attempt::reading ? readingCode(errnoValue) : writingCode(errnoValue), errnoValue};
}

} // namespace quillane
