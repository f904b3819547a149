#include "Mounts.h"
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
    std::array<char, MAXPATHLEN> above{};
    if (::fcntl(folder, F_GETPATH, above.data()) != 0) {
        return false;
    }
    const auto path = std::string(withoutDataVolume(above.data())) + "/" + name;
    for (const auto& mount : listOfMounts()) {
        if (isAtOrBelow(withoutDataVolume(mount.f_mntonname), path)) {
            return true;
        }
    }
    return false;
}

} // namespace quillane::Mounts
