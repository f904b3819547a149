#pragma once
#include "FileCall.h"
#include "ForwardingFileSystem.h"
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// Another file system, with a record of what was asked. Answers exactly as the other does. Any thread.
class RecordingFileSystem final : public ForwardingFileSystem {
  public:
    struct Call {
        FileCall call = FileCall::exists;
        FileURL url;
        friend bool operator==(const Call&, const Call&) = default;
    };

    using ForwardingFileSystem::ForwardingFileSystem;

    // Runs before each call is passed on, on the caller's thread. Set before the calls begin.
    void beforeEach(std::function<void(const Call&)> hook) { m_beforeCall = std::move(hook); }
    // Runs before each entry of a walk is told, with its path.
    void beforeEachEntry(std::function<void(const FileURL&)> hook) { m_beforeEntry = std::move(hook); }

    // All calls in their order.
    std::vector<Call> calls() const;
    // The paths of the calls of one kind, in their order.
    std::vector<FileURL> calls(FileCall call) const;
    // The folders whose content was read: those listed, the roots of walks, and the folders that walks were
    // told to go on into. In their order.
    std::vector<FileURL> entered() const;
    void clear();

    bool exists(const FileURL& url) const override;
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override;
    Result<ResourceValues> resourceValues(const FileURL& url) const override;
    Result<VolumeSpace> volumeSpace(const FileURL& folder) const override;
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override;
    Result<std::string> read(const FileURL& url, std::size_t limit) const override;
    Result<std::string> extendedAttribute(const FileURL& url, const std::string& name,
                                          std::size_t limit) const override;
    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const override;
    Result<> createDirectories(const FileURL& url) override;

  private:
    class RecordedFile;
    void note(FileCall call, const FileURL& url) const;
    void noteEntered(const FileURL& folder) const;

    std::function<void(const Call&)> m_beforeCall;
    std::function<void(const FileURL&)> m_beforeEntry;
    mutable std::mutex m_mutex; // guards the records
    mutable std::vector<Call> m_calls;
    mutable std::vector<FileURL> m_entered;
};

} // namespace quillane
