#include "BulkListing.h"
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <string_view>
#include <sys/attr.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane::BulkListing {
namespace {

constexpr std::size_t kBlock = 512;
constexpr attrgroup_t kNamesAndTypes = ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE;

struct State {
    std::mutex mutex; // guards what follows
    std::map<std::pair<dev_t, ino_t>, Marks> marks;
    int refusal = 0;
    Calls calls;
};

State& state() {
    static State only;
    return only;
}

std::string_view manner() {
    const char* chosen = std::getenv("QUILLANE_LISTING"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    return chosen != nullptr ? chosen : "";
}

std::uint32_t typeOf(unsigned char type) {
    switch (type) {
    case DT_REG:
        return 1;
    case DT_DIR:
        return 2;
    case DT_BLK:
        return 3;
    case DT_CHR:
        return 4;
    case DT_LNK:
        return 5;
    case DT_SOCK:
        return 6;
    case DT_FIFO:
        return 7;
    default:
        return 0;
    }
}

Marks marksOf(const struct stat& status) {
    const std::lock_guard lock(state().mutex);
    const auto found = state().marks.find({status.st_dev, status.st_ino});
    return found == state().marks.end() ? Marks() : found->second;
}

// One call: it goes on where the descriptor stands and leaves it behind the last entry that had room.
class Call {
  public:
    Call(int folder, const attrlist& list, std::byte* buffer, std::size_t size)
        : m_folder(folder)
        , m_list(list)
        , m_buffer(buffer)
        , m_size(size) {}

    int answer() {
        const auto begin = ::lseek(m_folder, 0, SEEK_CUR);
        if (const int error = refusal()) {
            errno = error;
            return -1;
        }
        std::array<char, std::size_t{8} * 1024> names;
        for (;;) {
            const auto length = ::getdents64(m_folder, names.data(), names.size());
            if (length < 0) {
                return -1;
            }
            if (length == 0) {
                return m_count;
            }
            for (std::size_t at = 0; at < static_cast<std::size_t>(length);) {
                const char* record = names.data() + at;
                if (const int error = take(record)) {
                    return end(error, begin);
                }
                std::uint16_t step = 0;
                std::memcpy(&step, record + offsetof(dirent64, d_reclen), sizeof step);
                std::memcpy(&m_position, record + offsetof(dirent64, d_off), sizeof m_position);
                at += step;
            }
        }
    }

  private:
    bool asksForDetails() const {
        return (m_list.commonattr & ~(kNamesAndTypes | ATTR_CMN_ERROR)) != 0 || m_list.dirattr != 0 ||
               m_list.fileattr != 0;
    }
    int refusal() const {
        const std::lock_guard lock(state().mutex);
        ++state().calls.all;
        state().calls.forSizes += m_list.fileattr != 0 ? 1 : 0;
        state().calls.forMarks += (m_list.commonattr & ATTR_CMN_FNDRINFO) != 0 ? 1 : 0;
        if (m_list.bitmapcount != ATTR_BIT_MAP_COUNT ||
            (m_list.commonattr & kNamesAndTypes) != kNamesAndTypes) {
            return EINVAL;
        }
        return asksForDetails() ? state().refusal : 0;
    }

    // The error, ERANGE for an entry without room, or 0.
    int take(const char* record) {
        const std::string name = record + offsetof(dirent64, d_name);
        if (name == "." || name == "..") {
            return 0;
        }
        const auto type = static_cast<unsigned char>(record[offsetof(dirent64, d_type)]);
        const auto entry = told(name, type);
        if (entry.error && *entry.error == static_cast<std::uint32_t>(EACCES)) {
            return EACCES; // of the folder, and thus of the call
        }
        const BulkAnswer one{entry};
        if (m_size - m_used < one.bytes().size()) {
            return ERANGE;
        }
        std::memcpy(m_buffer + m_used, one.bytes().data(), one.bytes().size());
        m_used += one.bytes().size();
        ++m_count;
        return 0;
    }

    BulkAnswer::Entry told(const std::string& name, unsigned char type) const {
        BulkAnswer::Entry entry{.name = name};
        if (manner() == "errors" && name.size() % 2 == 0) {
            entry.error = EIO;
            return entry;
        }
        if (manner() != "untyped") {
            entry.type = typeOf(type);
        }
        return asksForDetails() ? withDetails(std::move(entry)) : entry;
    }

    BulkAnswer::Entry withDetails(BulkAnswer::Entry entry) const {
        struct stat status = {};
        if (::fstatat(m_folder, entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return {.name = entry.name, .error = static_cast<std::uint32_t>(errno)};
        }
        const auto marks = marksOf(status);
        if ((m_list.commonattr & ATTR_CMN_FNDRINFO) != 0) {
            entry.finderFlags = marks.finderFlags;
        }
        if ((m_list.commonattr & ATTR_CMN_FLAGS) != 0) {
            entry.flags = marks.flags;
        }
        if (m_list.dirattr != 0 && S_ISDIR(status.st_mode)) {
            entry.mountStatus = marks.mountStatus;
        }
        if (m_list.fileattr != 0 && !S_ISDIR(status.st_mode)) {
            entry.allocated = marks.allocated.value_or(status.st_blocks * static_cast<std::int64_t>(kBlock));
        }
        return entry;
    }

    int end(int error, off_t begin) {
        ::lseek(m_folder, m_count > 0 ? m_position : begin, SEEK_SET);
        if (error == ERANGE && m_count > 0) {
            return m_count;
        }
        ::lseek(m_folder, begin, SEEK_SET);
        errno = error;
        return -1;
    }

    const int m_folder;
    const attrlist& m_list;
    std::byte* const m_buffer;
    const std::size_t m_size;
    std::size_t m_used = 0;
    std::int64_t m_position = 0; // behind the last entry that was taken
    int m_count = 0;
};

} // namespace

void mark(const std::string& path, const Marks& marks) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0) {
        std::abort(); // a test's own mistake
    }
    const std::lock_guard lock(state().mutex);
    state().marks[{status.st_dev, status.st_ino}] = marks;
}

void unmarkAll() {
    const std::lock_guard lock(state().mutex);
    state().marks.clear();
}

void refuseDetails(int error) {
    const std::lock_guard lock(state().mutex);
    state().refusal = error;
}

Calls takeCalls() {
    const std::lock_guard lock(state().mutex);
    return std::exchange(state().calls, Calls());
}

} // namespace quillane::BulkListing

int getattrlistbulk(int folder, void* list, void* buffer, std::size_t size, std::uint64_t /*options*/) {
    return quillane::BulkListing::Call(folder, *static_cast<const attrlist*>(list),
                                       static_cast<std::byte*>(buffer), size)
        .answer();
}
