#include "Mounts.h"
#include "Descriptor.h"
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace quillane::Mounts {
namespace {

// Of the fields of a line of the list, counted from 0: where it is mounted.
constexpr int kMountPoint = 4;
constexpr std::size_t kChunk = 65536;

std::optional<Identity> identityWithoutMount(int folder) {
    struct stat status = {};
    if (::fstat(folder, &status) != 0) {
        return std::nullopt;
    }
    return Identity{{status.st_dev, 0}, status.st_ino};
}

// Empty when it has none, or none that can be told.
std::string pathOf(int folder) {
    std::array<char, PATH_MAX> path{};
    const auto link = "/proc/self/fd/" + std::to_string(folder);
    const auto length = ::readlink(link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

// All that could be read. The system makes the list as it is read.
std::string listOfMounts() {
    const Descriptor file(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    std::string text;
    std::string chunk(kChunk, '\0');
    for (ssize_t length = 1; file && length != 0;) {
        length = ::read(file.get(), chunk.data(), chunk.size());
        if (length < 0 && errno != EINTR) {
            break;
        }
        if (length > 0) {
            text.append(chunk, 0, static_cast<std::size_t>(length));
        }
    }
    return text;
}

std::string_view field(std::string_view line, int number) {
    for (; number > 0; --number) {
        const auto blank = line.find(' ');
        line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
    }
    return line.substr(0, line.find(' '));
}

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// Blanks, line feeds and backslashes are written as a backslash and three octal digits.
std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
            isOctal(text[i + 3])) {
            out +=
                static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

bool isAtOrBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

std::optional<Identity> identityOf(int folder) {
#ifdef STATX_MNT_ID
    struct statx status = {};
    if (::statx(folder, "", AT_EMPTY_PATH, STATX_INO | STATX_MNT_ID, &status) == 0 &&
        (status.stx_mask & STATX_MNT_ID) != 0) {
        return Identity{{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_mnt_id},
                        status.stx_ino};
    }
#endif
    return identityWithoutMount(folder); // kernels before 5.8 number no mounts
}

bool isAnyAtOrBelow(int folder, const std::string& name) {
    const auto above = pathOf(folder);
    if (above.empty()) {
        return false;
    }
    const auto path = (above == "/" ? "" : above) + "/" + name;
    const auto list = listOfMounts();
    for (std::string_view rest = list; !rest.empty();) {
        const auto line = rest.substr(0, rest.find('\n'));
        if (isAtOrBelow(unescaped(field(line, kMountPoint)), path)) {
            return true;
        }
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
    }
    return false;
}

} // namespace quillane::Mounts
