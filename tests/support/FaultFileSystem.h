#pragma once
#include "ForwardingFileSystem.h"
#include <functional>
#include <map>
#include <mutex>
#include <set>

namespace quillane {

// A file system in which chosen paths fail, and which can do something when a path is touched: take a file
// away between a listing and a reading, for one. Set up before use; calls may come from any thread.
class FaultFileSystem final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    // Every call on this very path fails so.
    void fail(const FileURL& url, PlatformError error) { m_errors[url] = error; }
    // Called before each call on this path.
    void before(const FileURL& url, std::function<void()> hook) { m_hooks[url] = std::move(hook); }
    // The paths that were listed, walked, read or asked about, in their order.
    std::vector<FileURL> touched() const {
        const std::lock_guard lock(m_mutex);
        return m_touched;
    }

    bool exists(const FileURL& url) const override {
        return !touch(url) && ForwardingFileSystem::exists(url);
    }
    Result<std::vector<DirectoryEntry>> list(const FileURL& folder) const override {
        if (const auto error = touch(folder)) {
            return *error;
        }
        return ForwardingFileSystem::list(folder);
    }
    Result<ResourceValues> resourceValues(const FileURL& url) const override {
        if (const auto error = touch(url)) {
            return *error;
        }
        return ForwardingFileSystem::resourceValues(url);
    }
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override {
        if (const auto error = touch(root)) {
            return *error;
        }
        return ForwardingFileSystem::walk(root, options, visit);
    }
    Result<std::string> read(const FileURL& url, std::size_t limit) const override {
        if (const auto error = touch(url)) {
            return *error;
        }
        return ForwardingFileSystem::read(url, limit);
    }
    Result<> createDirectories(const FileURL& url) override {
        if (const auto error = touch(url)) {
            return *error;
        }
        return ForwardingFileSystem::createDirectories(url);
    }

  private:
    std::optional<PlatformError> touch(const FileURL& url) const {
        {
            const std::lock_guard lock(m_mutex);
            m_touched.push_back(url);
        }
        if (const auto hook = m_hooks.find(url); hook != m_hooks.end()) {
            hook->second();
        }
        const auto error = m_errors.find(url);
        return error == m_errors.end() ? std::nullopt : std::optional(error->second);
    }

    std::map<FileURL, PlatformError> m_errors;
    std::map<FileURL, std::function<void()>> m_hooks;
    mutable std::mutex m_mutex; // guards the record
    mutable std::vector<FileURL> m_touched;
};

} // namespace quillane
