#include "SpaceReserve.h"
#include "AtomicFile.h"
#include "BlockCounts.h"
#include "Descriptor.h"
#include "FileRemover.h"
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

constexpr mode_t kOwnerOnly = 0600;
constexpr int kOpen = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
// What tells a reserve from a file that somebody put in its place.
constexpr std::string_view kHead = "Quillane keeps this room for the day on which the disk is full.\n";
constexpr std::int64_t kHeadRoom = 4096; // is never given away
// Given away at a time: some records, and a whole block of any file system.
constexpr std::int64_t kStep = std::int64_t{64} << 10U;

struct Reserve {
    Descriptor file;
    struct stat status = {};
};

bool holdsHead(int file) {
    std::string head(kHead.size(), '\0');
    return ::pread(file, head.data(), head.size(), 0) == static_cast<ssize_t>(head.size()) && head == kHead;
}

// Locked, so that nobody lays what another gives away. Empty when there is none, or something else in its place.
Reserve openReserve(const std::string& path, int flags) {
    Reserve reserve{Descriptor(::open(path.c_str(), kOpen | flags, kOwnerOnly))};
    if (!reserve.file) {
        return {};
    }
    while (::flock(reserve.file.get(), LOCK_EX) != 0 && errno == EINTR) {
    }
    auto& status = reserve.status;
    const bool isFile = ::fstat(reserve.file.get(), &status) == 0 && S_ISREG(status.st_mode) &&
                        status.st_uid == ::geteuid() && status.st_nlink == 1;
    if (!isFile || (status.st_size != 0 && !holdsHead(reserve.file.get()))) {
        return {};
    }
    return reserve;
}

// What the file holds from `begin` on: bytes that no file system can keep in less room than they take, pseudo-random
// by splitmix64, and the same for a place whenever it is written.
std::string content(std::int64_t begin, std::int64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
        auto mixed = (static_cast<std::uint64_t>(begin) + at) * 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        mixed ^= mixed >> 31U;
        std::memcpy(bytes.data() + at, &mixed, std::min(sizeof mixed, bytes.size() - at));
    }
    if (begin == 0) {
        bytes.replace(0, kHead.size(), kHead);
    }
    return bytes;
}

bool fill(int file, std::int64_t begin, std::int64_t end) {
    while (begin < end) {
        const auto length = std::min(kStep, end - begin);
        if (::pwrite(file, content(begin, length).data(), static_cast<std::size_t>(length), begin) !=
            length) {
            return false;
        }
        // A power cut must leave no file without its head: nobody would lay or give away such a one any more.
        if (begin == 0 && ::fsync(file) != 0) {
            return false;
        }
        begin += length;
    }
    return ::fsync(file) == 0;
}

bool hasRoomFor(int file, std::int64_t bytes) {
    const auto volume = BlockCounts::ofVolumeOf(file);
    return volume && volume->hasRoomFor(static_cast<std::uint64_t>(bytes));
}

bool canHoldMoreFiles(int file) {
    const auto volume = BlockCounts::ofVolumeOf(file);
    return !volume || volume->mayHoldMoreFiles();
}

} // namespace

SpaceReserve::SpaceReserve(std::string path)
    : SpaceReserve(std::move(path), Size()) {}

SpaceReserve::SpaceReserve(std::string path, Size size)
    : m_path(std::move(path))
    , m_size(size) {}

bool SpaceReserve::lay() {
    m_isShort = true; // until it is whole
    AtomicFile::makeFoldersAbove(m_path);
    const auto reserve = openReserve(m_path, O_CREAT);
    if (!reserve.file) {
        return false;
    }
    const std::int64_t laid = reserve.status.st_size;
    if (laid < m_size.whole) {
        if (!hasRoomFor(reserve.file.get(), m_size.whole - laid + m_size.whole)) {
            return false;
        }
        if (!fill(reserve.file.get(), laid, m_size.whole)) {
            (void)FileRemover::shorten(reserve.file.get(), laid); // the last room is for others
            return false;
        }
    }
    m_isShort = false;
    return true;
}

void SpaceReserve::layAgain() {
    if (m_isShort) {
        (void)lay();
    }
}

bool SpaceReserve::release(const Need& need) {
    const auto reserve = openReserve(m_path, 0);
    const auto& status = reserve.status;
    const auto kept = need.use == Use::moves ? m_size.forSettings : kHeadRoom;
    if (!reserve.file || status.st_dev != need.device || status.st_size <= kept ||
        !canHoldMoreFiles(reserve.file.get())) {
        return false;
    }
    const auto wanted = (need.bytes / kStep + 1) * kStep;
    if (!FileRemover::shorten(reserve.file.get(), std::max(kept, status.st_size - wanted))) {
        return false;
    }
    m_isShort = true;
    ::fsync(reserve.file.get()); // blocks are free for others only when that is written down
    return true;
}

} // namespace quillane
