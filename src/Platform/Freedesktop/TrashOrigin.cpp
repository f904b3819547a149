#include "TrashOrigin.h"
#include "PosixError.h"
#include "TrashBin.h"
#include "TrashInfo.h"
#include "Volume.h"
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane::TrashOrigin {
namespace {

// Far more than the longest path takes with each byte written as three.
constexpr std::size_t kMostOfRecord = 65536;

// A record that ends after `kMostOfRecord` bytes is read as if it ended there.
Result<std::string> textOf(int file) {
    std::string text(kMostOfRecord, '\0');
    std::size_t length = 0;
    while (length < text.size()) {
        const auto got = ::read(file, text.data() + length, text.size() - length);
        if (got < 0 && errno != EINTR) {
            return PosixError::reading(errno);
        }
        if (got == 0) {
            break;
        }
        length += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    text.resize(length);
    return text;
}

FileURL resolved(const FileURL& url) {
    const Volume machine;
    std::string rest(url.lastPathComponent());
    for (auto folder = url.deletingLastPathComponent();; folder = folder.deletingLastPathComponent()) {
        if (const auto real = machine.realPath(folder.path())) {
            return FileURL(*real).appending(rest);
        }
        if (folder == FileURL()) {
            return url;
        }
        rest.insert(0, std::string(folder.lastPathComponent()) + "/");
    }
}

} // namespace

Result<std::optional<FileURL>> recorded(int trash, const std::string& name, const FileURL& holder) {
    const auto info = TrashBins::openFolderAt(trash, "info");
    const Descriptor file(info ? ::openat(info.get(), (name + std::string(TrashInfo::kSuffix)).c_str(),
                                          O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)
                               : -1);
    if (!file && errno == ENOENT) {
        return std::optional<FileURL>();
    }
    const auto text = file ? textOf(file.get()) : Result<std::string>(PosixError::reading(errno));
    if (!text) {
        return text.error();
    }
    const auto path = TrashInfo::originalPath(*text);
    if (!path || path->empty()) {
        return std::optional<FileURL>();
    }
    return std::optional(path->starts_with('/') ? FileURL(*path) : holder.appending(*path));
}

bool isSamePlace(const FileURL& a, const FileURL& b) {
    return a == b || (a.lastPathComponent() == b.lastPathComponent() && resolved(a) == resolved(b));
}

} // namespace quillane::TrashOrigin
