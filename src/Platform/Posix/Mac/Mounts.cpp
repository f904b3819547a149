#include "Mounts.h"
#include "Descriptor.h"
#include "FileMover.h"
#include <array>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <vector>

namespace quillane::Mounts {
namespace {

// Where the volume of all users' files is mounted beside the system's own; both show the same paths.
constexpr std::string_view kDataVolume = "/System/Volumes/Data";

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::string_view withoutDataVolume(std::string_view path) {
    return isAtOrBelow(path, kDataVolume) ? path.substr(kDataVolume.size()) : path;
}

// No more than are mounted at the moment of the first question, and some room.
std::vector<struct statfs> listOfMounts() {
    const int known = ::getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<struct statfs> mounts(known > 0 ? static_cast<std::size_t>(known) + 16 : 0);
    const int found =
        ::getfsstat(mounts.data(), static_cast<int>(mounts.size() * sizeof(struct statfs)), MNT_NOWAIT);
    mounts.resize(found > 0 ? static_cast<std::size_t>(found) : 0);
    return mounts;
}

std::optional<std::string> pathOf(int folder) {
    std::array<char, MAXPATHLEN> path{};
    return ::fcntl(folder, F_GETPATH, path.data()) == 0 ? std::optional<std::string>(path.data())
                                                        : std::nullopt;
}

// In the spelling that its volume keeps where it is a folder that can be opened, and as it was asked for otherwise: a
// volume may take several spellings for one name.
std::optional<std::string> pathOfEntry(int folder, const std::string& name) {
    constexpr int kNotFollowed = O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    if (const Descriptor entry(::openat(folder, name.c_str(), FileMover::kOpenUnlisted | kNotFollowed));
        entry) {
        return pathOf(entry.get());
    }
    auto path = pathOf(folder);
    if (path) {
        *path += path->ends_with('/') ? name : "/" + name;
    }
    return path;
}

} // namespace

// Each mount has an identifier of its own here, also a second one of the same device.
std::optional<Identity> identityOf(int folder) {
    struct stat status = {};
    struct statfs volume = {};
    if (::fstat(folder, &status) != 0 || ::fstatfs(folder, &volume) != 0) {
        return std::nullopt;
    }
    Identity identity{{status.st_dev, 0}, status.st_ino};
    static_assert(sizeof(volume.f_fsid) == sizeof(identity.place.mount));
    std::memcpy(&identity.place.mount, &volume.f_fsid, sizeof(volume.f_fsid));
    return identity;
}

bool isAnyAtOrBelow(int folder, const std::string& name) {
    const auto told = pathOfEntry(folder, name);
    if (!told) {
        return false;
    }
    const auto path = withoutDataVolume(*told);
    for (const auto& mount : listOfMounts()) {
        if (isAtOrBelow(withoutDataVolume(mount.f_mntonname), path)) {
            return true;
        }
    }
    return false;
}

} // namespace quillane::Mounts
