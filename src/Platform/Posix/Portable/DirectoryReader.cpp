#include "DirectoryReader.h"
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace quillane {
namespace {

// Not every system tells types; without them each entry is asked for its status.
std::optional<EntryType> listedType([[maybe_unused]] const dirent& entry) {
#ifdef QUILLANE_WITHOUT_ENTRY_TYPES
    return std::nullopt;
#else
    return entryTypeOfListed(entry.d_type);
#endif
}

} // namespace

DirectoryReader::DirectoryReader(std::size_t) {}

DirectoryReader::~DirectoryReader() {
    close();
}

void DirectoryReader::close() {
    if (m_stream != nullptr) {
        ::closedir(m_stream);
        m_stream = nullptr;
    }
}

DirectoryReader::Filled DirectoryReader::fill(int folder, std::size_t) {
    close();
    // The stream closes its descriptor, and the caller's stays open.
    const int copy = ::fcntl(folder, F_DUPFD_CLOEXEC, 0);
    if (copy < 0) {
        return Filled::failure;
    }
    m_stream = ::fdopendir(copy);
    if (m_stream == nullptr) {
        const int why = errno;
        ::close(copy);
        errno = why;
        return Filled::failure;
    }
    return Filled::entries;
}

bool DirectoryReader::next(RawEntry& entry) {
    while (m_stream != nullptr) {
        const dirent* found =
            ::readdir(m_stream); // NOLINT(concurrency-mt-unsafe): the stream is this object's own
        if (found == nullptr) {
            close();
            return false;
        }
        const std::string_view name = found->d_name;
        if (name != "." && name != "..") {
            entry = {name.data(), name.size(), listedType(*found)};
            return true;
        }
    }
    return false;
}

bool DirectoryReader::resume(int, std::int64_t) {
    return true;
}

bool statusBelow(int folder, const char* name, struct stat& status) {
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace quillane
