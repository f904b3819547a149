#include "DirectoryReader.h"
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace quillane {
namespace {

template <class Field>
Field fieldAt(const std::byte* entry, std::size_t offset) {
    Field field;
    std::memcpy(&field, entry + offset, sizeof field);
    return field;
}

} // namespace

DirectoryReader::DirectoryReader(std::size_t largestBatch, ListingDetails /*details*/)
    : m_buffer(new std::byte[largestBatch])
    , m_size(largestBatch) {}

DirectoryReader::Filled DirectoryReader::fill(int folder, std::size_t bytes, const Place& /*place*/) {
    ssize_t length = -1;
    do {
        length = ::getdents64(folder, m_buffer.get(), std::min(bytes, m_size));
    } while (length < 0 && errno == EINTR);
    m_begin = 0;
    m_end = length > 0 ? static_cast<std::size_t>(length) : 0;
    if (length < 0) {
        return Filled::failure;
    }
    return length == 0 ? Filled::end : Filled::entries;
}

bool DirectoryReader::next(RawEntry& entry) {
    while (m_begin < m_end) {
        const std::byte* record = m_buffer.get() + m_begin;
        m_begin += fieldAt<unsigned short>(record, offsetof(dirent64, d_reclen));
        m_position = fieldAt<std::int64_t>(record, offsetof(dirent64, d_off));
        const std::string_view name = reinterpret_cast<const char*>(record) + offsetof(dirent64, d_name);
        if (name != "." && name != "..") {
            entry.name = name.data(); // nothing else is ever set
            entry.length = name.size();
            entry.type = entryTypeOfListed(fieldAt<unsigned char>(record, offsetof(dirent64, d_type)));
            return true;
        }
    }
    return false;
}

bool DirectoryReader::resume(int folder, Place& place) {
    return ::lseek(folder, place.position, SEEK_SET) >= 0;
}

bool statusBelow(int folder, const char* name, struct stat& status) {
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) == 0;
}

} // namespace quillane
