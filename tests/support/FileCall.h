#pragma once

namespace quillane {

// The calls of the file system that can fail, for the wrappers that watch or disturb them.
enum class FileCall {
    exists,
    list,
    resourceValues,
    volumeSpace,
    walk,
    read,
    extendedAttribute,
    open,
    readAt,
    length,
    close,
    createDirectories
};

} // namespace quillane
