#include "DirectoryReader.h"
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <unistd.h>

namespace quillane {
namespace {

// Measured: larger ones gain nothing, and smaller ones cost calls in large folders.
constexpr std::size_t kBufferBytes = std::size_t{256} * 1024;

std::optional<EntryType> typeOf(unsigned char type) {
    switch (type) {
    case DT_REG:
        return EntryType::regular;
    case DT_DIR:
        return EntryType::directory;
    case DT_LNK:
        return EntryType::symbolicLink;
    case DT_UNKNOWN:
        return std::nullopt;
    default:
        return EntryType::other;
    }
}

bool isSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

} // namespace

DirectoryReader::DirectoryReader()
    : m_buffer(std::make_unique_for_overwrite<char[]>(kBufferBytes)) {}

bool DirectoryReader::fill(int folder) {
    errno = 0;
    m_at = 0;
    m_filled = 0;
    const auto count = ::getdents64(folder, m_buffer.get(), kBufferBytes);
    if (count <= 0) {
        return false;
    }
    m_filled = static_cast<std::size_t>(count);
    return true;
}

bool DirectoryReader::next(Entry& entry) {
    while (m_at < m_filled) {
        // The kernel aligns its records to eight bytes.
        const auto* record = reinterpret_cast<const dirent64*>(m_buffer.get() + m_at);
        m_at += record->d_reclen;
        if (!isSelfOrParent(record->d_name)) {
            entry.name = record->d_name;
            entry.length = std::strlen(record->d_name);
            entry.type = typeOf(record->d_type);
            return true;
        }
    }
    return false;
}

} // namespace quillane
