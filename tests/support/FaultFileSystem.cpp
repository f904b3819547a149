#include "FaultFileSystem.h"
#include "WalkedPaths.h"
#include <cerrno>

namespace quillane {
namespace {

constexpr PlatformError kGone = {ErrorCode::kReadNoSuchFile, ENOENT};
constexpr PlatformError kDenied = {ErrorCode::kReadNoPermission, EACCES};

} // namespace

// A file that was opened goes on answering when its name has gone: only its own calls can fail.
class FaultFileSystem::FaultyFile final : public OpenFile {
  public:
    FaultyFile(const FaultFileSystem& files, FileURL url, std::unique_ptr<OpenFile> file)
        : m_files(files)
        , m_url(std::move(url))
        , m_file(std::move(file)) {}

    Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
        if (const auto error = m_files.readFailure(m_url, offset, buffer.size())) {
            return *error;
        }
        return m_file->readAt(buffer, offset);
    }
    Result<Bytes> length() override {
        if (const auto error = m_files.plannedFailure(FileCall::length)) {
            return *error;
        }
        return m_file->length();
    }
    Result<> close() override {
        const auto closed = m_file->close();
        if (const auto error = m_files.plannedFailure(FileCall::close)) {
            return *error;
        }
        return closed;
    }

  private:
    const FaultFileSystem& m_files;
    FileURL m_url;
    std::unique_ptr<OpenFile> m_file;
};

void FaultFileSystem::fail(const FileURL& url, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_errors[url] = error;
}

void FaultFileSystem::failEvery(FileCall call, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_every[call] = error;
}

void FaultFileSystem::flagHidden(const FileURL& url) {
    const std::lock_guard lock(m_mutex);
    m_hidden.insert(url);
}

void FaultFileSystem::markAsPackage(const FileURL& folder) {
    const std::lock_guard lock(m_mutex);
    m_packages.insert(folder);
}

bool FaultFileSystem::isOneOf(const std::set<FileURL>& urls, const FileURL& url) const {
    const std::lock_guard lock(m_mutex);
    return urls.contains(url);
}

void FaultFileSystem::failNth(FileCall call, int n, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_nth[call] = {n, error};
}

void FaultFileSystem::failReadingAt(const FileURL& url, Bytes byte, PlatformError error) {
    const std::lock_guard lock(m_mutex);
    m_badBytes[url] = {byte, error};
}

void FaultFileSystem::deny(const FileURL& folder) {
    const std::lock_guard lock(m_mutex);
    m_denied.insert(folder);
}

void FaultFileSystem::vanish(const FileURL& url) {
    const std::lock_guard lock(m_mutex);
    m_gone.insert(url);
}

void FaultFileSystem::sendToTheCloud(const FileURL& url) {
    const std::lock_guard lock(m_mutex);
    m_inTheCloud.insert(url);
}

void FaultFileSystem::pretendSpace(VolumeSpace space) {
    const std::lock_guard lock(m_mutex);
    m_space = space;
}

std::vector<FileURL> FaultFileSystem::touched() const {
    const std::lock_guard lock(m_mutex);
    return m_touched;
}

bool FaultFileSystem::isDenied(const FileURL& url) const {
    const std::lock_guard lock(m_mutex);
    return m_denied.contains(url);
}

bool FaultFileSystem::isGone(const FileURL& url) const {
    const std::lock_guard lock(m_mutex);
    for (FileURL at = url; !m_gone.empty(); at = at.deletingLastPathComponent()) {
        if (m_gone.contains(at)) {
            return true;
        }
        if (at.path() == "/") {
            break;
        }
    }
    return false;
}

std::optional<PlatformError> FaultFileSystem::touch(FileCall call, const FileURL& url) const {
    {
        const std::lock_guard lock(m_mutex);
        m_touched.push_back(url);
    }
    if (const auto hook = m_hooks.find(url); hook != m_hooks.end()) {
        hook->second();
    }
    return failure(call, url);
}

std::optional<PlatformError> FaultFileSystem::failure(FileCall call, const FileURL& url) const {
    if (isGone(url)) {
        return kGone;
    }
    if (const auto planned = plannedFailure(call)) {
        return planned;
    }
    const std::lock_guard lock(m_mutex);
    if (const auto error = m_errors.find(url); error != m_errors.end()) {
        return error->second;
    }
    if ((call == FileCall::list || call == FileCall::walk) && m_denied.contains(url)) {
        return kDenied;
    }
    return std::nullopt;
}

std::optional<PlatformError> FaultFileSystem::plannedFailure(FileCall call) const {
    const std::lock_guard lock(m_mutex);
    if (const auto nth = m_nth.find(call); nth != m_nth.end() && --nth->second.left == 0) {
        const auto error = nth->second.error;
        m_nth.erase(nth);
        return error;
    }
    const auto every = m_every.find(call);
    return every == m_every.end() ? std::nullopt : std::optional(every->second);
}

std::optional<PlatformError> FaultFileSystem::readFailure(const FileURL& url, Bytes offset,
                                                          std::size_t length) const {
    if (const auto planned = plannedFailure(FileCall::readAt)) {
        return planned;
    }
    const std::lock_guard lock(m_mutex);
    const auto bad = m_badBytes.find(url);
    const bool isTaken = bad != m_badBytes.end() && bad->second.byte >= offset &&
                         bad->second.byte < offset + static_cast<Bytes>(length);
    return isTaken ? std::optional(bad->second.error) : std::nullopt;
}

bool FaultFileSystem::exists(const FileURL& url) const {
    return !touch(FileCall::exists, url) && ForwardingFileSystem::exists(url);
}

Result<std::vector<DirectoryEntry>> FaultFileSystem::list(const FileURL& folder) const {
    if (const auto error = touch(FileCall::list, folder)) {
        return *error;
    }
    const auto listed = ForwardingFileSystem::list(folder);
    if (!listed) {
        return listed;
    }
    auto entries = *listed;
    for (auto& entry : entries) {
        entry.isFlaggedHidden = entry.isFlaggedHidden || isOneOf(m_hidden, folder.appending(entry.name));
    }
    return entries;
}

Result<ResourceValues> FaultFileSystem::resourceValues(const FileURL& url) const {
    if (const auto error = touch(FileCall::resourceValues, url)) {
        return *error;
    }
    return ForwardingFileSystem::resourceValues(url);
}

Result<VolumeSpace> FaultFileSystem::volumeSpace(const FileURL& folder) const {
    if (const auto error = touch(FileCall::volumeSpace, folder)) {
        return *error;
    }
    {
        const std::lock_guard lock(m_mutex);
        if (m_space) {
            return *m_space;
        }
    }
    return ForwardingFileSystem::volumeSpace(folder);
}

Result<> FaultFileSystem::walk(const FileURL& root, WalkOptions options, Visitor visit) const {
    if (const auto error = touch(FileCall::walk, root)) {
        return *error;
    }
    WalkedPaths paths(root);
    return ForwardingFileSystem::walk(root, options, [&](const WalkEntry& entry) {
        const FileURL url = paths.told(entry);
        const bool gone = isGone(url);
        WalkEntry told = entry;
        told.allocated = gone ? 0 : entry.allocated;
        told.isMarkedAsPackage = entry.isMarkedAsPackage || (options.readsMarks && isOneOf(m_packages, url));
        const auto values = [&]() -> Result<ResourceValues> {
            if (const auto error = touch(FileCall::resourceValues, url)) {
                return *error;
            }
            return entry.resourceValues();
        };
        told.resourceValues = values;
        const auto answer = visit(told);
        const bool closed = entry.type == EntryType::directory && (gone || isDenied(url));
        return closed && answer == WalkAnswer::proceed ? WalkAnswer::skipBelow : answer;
    });
}

Result<std::string> FaultFileSystem::read(const FileURL& url, std::size_t limit) const {
    if (const auto error = touch(FileCall::read, url)) {
        return *error;
    }
    return ForwardingFileSystem::read(url, limit);
}

Result<std::string> FaultFileSystem::extendedAttribute(const FileURL& url, const std::string& name,
                                                       std::size_t limit) const {
    if (const auto error = touch(FileCall::extendedAttribute, url)) {
        return *error;
    }
    return ForwardingFileSystem::extendedAttribute(url, name, limit);
}

bool FaultFileSystem::isAwaitingDownload(const FileURL& url) const {
    {
        const std::lock_guard lock(m_mutex);
        if (m_inTheCloud.contains(url)) {
            return true;
        }
    }
    return ForwardingFileSystem::isAwaitingDownload(url);
}

Result<std::unique_ptr<OpenFile>> FaultFileSystem::openForReading(const FileURL& url) const {
    if (const auto error = touch(FileCall::open, url)) {
        return *error;
    }
    auto file = ForwardingFileSystem::openForReading(url);
    if (!file) {
        return file;
    }
    return std::unique_ptr<OpenFile>(std::make_unique<FaultyFile>(*this, url, std::move(file).value()));
}

Result<> FaultFileSystem::createDirectories(const FileURL& url) {
    if (const auto error = touch(FileCall::createDirectories, url)) {
        return *error;
    }
    return ForwardingFileSystem::createDirectories(url);
}

} // namespace quillane
