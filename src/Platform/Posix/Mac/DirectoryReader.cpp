#include "DirectoryReader.h"
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/attr.h>
#include <unistd.h>

namespace quillane {
namespace {

using Attribute = BulkEntries::Attribute;
static_assert(Attribute::kName == ATTR_CMN_NAME && Attribute::kObjectType == ATTR_CMN_OBJTYPE &&
              Attribute::kFinderInfo == ATTR_CMN_FNDRINFO && Attribute::kFlags == ATTR_CMN_FLAGS &&
              Attribute::kError == ATTR_CMN_ERROR && Attribute::kReturned == ATTR_CMN_RETURNED_ATTRS &&
              Attribute::kFolderMountStatus == ATTR_DIR_MOUNTSTATUS &&
              Attribute::kFileAllocatedSize == ATTR_FILE_ALLOCSIZE);
using Value = BulkEntries::Value;
static_assert(Value::kIsMountPoint == DIR_MNTSTATUS_MNTPOINT && Value::kIsHidden == UF_HIDDEN &&
              Value::kIsFirmlink == SF_FIRMLINK);

// Without the type every file system takes a slower road.
constexpr attrgroup_t kNamesAndTypes = ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE;

attrlist asked(ListingDetails details) {
    attrlist list{};
    list.bitmapcount = ATTR_BIT_MAP_COUNT;
    list.commonattr = kNamesAndTypes | ATTR_CMN_ERROR | ATTR_CMN_FLAGS;
    list.dirattr = ATTR_DIR_MOUNTSTATUS;
    if (details.marks) {
        list.commonattr |= ATTR_CMN_FNDRINFO;
    }
    if (details.sizes) {
        list.fileattr = ATTR_FILE_ALLOCSIZE;
    }
    return list;
}

attrlist namesAndTypes() {
    attrlist list{};
    list.bitmapcount = ATTR_BIT_MAP_COUNT;
    list.commonattr = kNamesAndTypes;
    return list;
}

int readOnce(int folder, attrlist& list, std::byte* buffer, std::size_t bytes) {
    int count = -1;
    do {
        count = ::getattrlistbulk(folder, &list, buffer, bytes, 0);
    } while (count < 0 && errno == EINTR);
    return count;
}

// A folder that may be listed but not entered tells no more than names and types, and so may a file system that
// knows nothing else.
bool mayTellLess(int error) {
    return error == EACCES || error == EPERM || error == ENOTSUP || error == EINVAL;
}

} // namespace

DirectoryReader::DirectoryReader(std::size_t largestBatch, ListingDetails details)
    : m_buffer(new std::byte[largestBatch])
    , m_size(largestBatch)
    , m_details(details) {}

int DirectoryReader::read(int folder, std::size_t bytes) {
    auto all = asked(m_details);
    int count = readOnce(folder, all, m_buffer.get(), bytes);
    if (count < 0 && errno == ERANGE && bytes < m_size) {
        bytes = m_size;
        count = readOnce(folder, all, m_buffer.get(), bytes);
    }
    if (count < 0 && mayTellLess(errno)) {
        auto less = namesAndTypes();
        count = readOnce(folder, less, m_buffer.get(), bytes);
    }
    m_batch = BulkEntries({m_buffer.get(), bytes}, count > 0 ? static_cast<std::size_t>(count) : 0);
    return count;
}

DirectoryReader::Filled DirectoryReader::fill(int folder, std::size_t bytes, const Place& place) {
    m_count = 0;
    for (auto known = place.isAnew ? place.entries : 0;;) {
        const int count = read(folder, std::min(bytes, m_size));
        if (count <= 0) {
            return count == 0 ? Filled::end : Filled::failure;
        }
        const auto passed = std::min<std::uint64_t>(known, static_cast<std::uint64_t>(count));
        m_batch.skip(passed);
        known -= passed;
        m_count = static_cast<std::size_t>(count) - passed;
        if (m_count > 0) {
            return Filled::entries;
        }
    }
}

bool DirectoryReader::resume(int /*folder*/, Place& place) {
    place.isAnew = true;
    return true;
}

bool statusBelow(int folder, const char* name, struct stat& status) {
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace quillane
