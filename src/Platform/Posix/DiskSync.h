#pragma once

namespace quillane::DiskSync {

// Has what was written to an open file or folder survive a power cut: fsync(2), and the disk's own cache where that
// leaves it alone. Slow for all who use the disk, so for settings only. False with errno set. Each system's own.
bool write(int file);

} // namespace quillane::DiskSync
