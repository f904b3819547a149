#include "RecordingFileSystem.h"
#include "WalkedPaths.h"

namespace quillane {

// Tells the file system that opened it of each call; its own thread keeps them in order.
class RecordingFileSystem::RecordedFile final : public OpenFile {
  public:
    RecordedFile(const RecordingFileSystem& files, FileURL url, std::unique_ptr<OpenFile> file)
        : m_files(files)
        , m_url(std::move(url))
        , m_file(std::move(file)) {}

    Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
        m_files.note(FileCall::readAt, m_url);
        return m_file->readAt(buffer, offset);
    }
    Result<Bytes> length() override {
        m_files.note(FileCall::length, m_url);
        return m_file->length();
    }
    Result<> close() override {
        m_files.note(FileCall::close, m_url);
        return m_file->close();
    }

  private:
    const RecordingFileSystem& m_files;
    FileURL m_url;
    std::unique_ptr<OpenFile> m_file;
};

void RecordingFileSystem::note(FileCall call, const FileURL& url) const {
    {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back({call, url});
    }
    if (m_beforeCall) {
        m_beforeCall({call, url});
    }
}

void RecordingFileSystem::noteEntered(const FileURL& folder) const {
    const std::lock_guard lock(m_mutex);
    m_entered.push_back(folder);
}

std::vector<RecordingFileSystem::Call> RecordingFileSystem::calls() const {
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

std::vector<FileURL> RecordingFileSystem::calls(FileCall call) const {
    const std::lock_guard lock(m_mutex);
    std::vector<FileURL> urls;
    for (const auto& made : m_calls) {
        if (made.call == call) {
            urls.push_back(made.url);
        }
    }
    return urls;
}

std::vector<FileURL> RecordingFileSystem::entered() const {
    const std::lock_guard lock(m_mutex);
    return m_entered;
}

void RecordingFileSystem::clear() {
    const std::lock_guard lock(m_mutex);
    m_calls.clear();
    m_entered.clear();
}

bool RecordingFileSystem::exists(const FileURL& url) const {
    note(FileCall::exists, url);
    return ForwardingFileSystem::exists(url);
}

Result<std::vector<DirectoryEntry>> RecordingFileSystem::list(const FileURL& folder) const {
    note(FileCall::list, folder);
    noteEntered(folder);
    return ForwardingFileSystem::list(folder);
}

Result<ResourceValues> RecordingFileSystem::resourceValues(const FileURL& url) const {
    note(FileCall::resourceValues, url);
    return ForwardingFileSystem::resourceValues(url);
}

Result<VolumeSpace> RecordingFileSystem::volumeSpace(const FileURL& folder) const {
    note(FileCall::volumeSpace, folder);
    return ForwardingFileSystem::volumeSpace(folder);
}

Result<> RecordingFileSystem::walk(const FileURL& root, WalkOptions options, Visitor visit) const {
    note(FileCall::walk, root);
    noteEntered(root);
    WalkedPaths paths(root);
    return ForwardingFileSystem::walk(root, options, [&](const WalkEntry& entry) {
        const FileURL url = paths.told(entry);
        if (m_beforeEntry) {
            m_beforeEntry(url);
        }
        const auto values = [&] {
            note(FileCall::resourceValues, url);
            return entry.resourceValues();
        };
        WalkEntry told = entry;
        told.resourceValues = values;
        const auto answer = visit(told);
        if (entry.type == EntryType::directory && answer == WalkAnswer::proceed) {
            noteEntered(url);
        }
        return answer;
    });
}

Result<std::string> RecordingFileSystem::read(const FileURL& url, std::size_t limit) const {
    note(FileCall::read, url);
    return ForwardingFileSystem::read(url, limit);
}

Result<std::string> RecordingFileSystem::extendedAttribute(const FileURL& url, const std::string& name,
                                                           std::size_t limit) const {
    note(FileCall::extendedAttribute, url);
    return ForwardingFileSystem::extendedAttribute(url, name, limit);
}

Result<std::unique_ptr<OpenFile>> RecordingFileSystem::openForReading(const FileURL& url) const {
    note(FileCall::open, url);
    auto file = ForwardingFileSystem::openForReading(url);
    if (!file) {
        return file;
    }
    return std::unique_ptr<OpenFile>(std::make_unique<RecordedFile>(*this, url, std::move(file).value()));
}

Result<> RecordingFileSystem::createDirectories(const FileURL& url) {
    note(FileCall::createDirectories, url);
    return ForwardingFileSystem::createDirectories(url);
}

} // namespace quillane
