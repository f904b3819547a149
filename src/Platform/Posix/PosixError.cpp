#include "PosixError.h"
#include <cerrno>

namespace quillane::PosixError {

PlatformError reading(int error) {
    switch (error) {
    case EPERM:
    case EACCES:
        return {ErrorCode::kReadNoPermission, error};
    case ENOENT:
        return {ErrorCode::kReadNoSuchFile, error};
    case ENAMETOOLONG:
        return {ErrorCode::kReadInvalidName, error};
    case EFBIG:
        return {ErrorCode::kReadTooLarge, error};
    default:
        return {ErrorCode::kReadUnknown, error};
    }
}

PlatformError writing(int error) {
    switch (error) {
    case EPERM:
    case EACCES:
        return {ErrorCode::kWriteNoPermission, error};
    case ENOENT:
        return {ErrorCode::kNoSuchFileWriting, error};
    case ENAMETOOLONG:
        return {ErrorCode::kWriteInvalidName, error};
    case EEXIST:
        return {ErrorCode::kWriteFileExists, error};
    case ENOSPC:
    case EDQUOT:
        return {ErrorCode::kWriteNoSpace, error};
    case EROFS:
        return {ErrorCode::kWriteReadOnlyVolume, error};
    default:
        return {ErrorCode::kWriteUnknown, error};
    }
}

} // namespace quillane::PosixError
