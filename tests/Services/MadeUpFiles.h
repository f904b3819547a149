#pragma once
#include "ContentComparison.h"
#include "ForwardingFileSystem.h"
#include "PosixFileSystem.h"
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace quillane {

// A file that is told by one letter for each kLetter bytes, so that long ones cost nothing to lay.
struct MadeUpFile {
    static constexpr std::size_t kLetter = SteppedComparison::kPortion / 8; // of whole steps

    std::string letters = {};
    Bytes tail = 0;                              // bytes of the last letter once more, fewer than kLetter
    std::optional<Bytes> badByte = std::nullopt; // a read that would take it fails
    bool opens = true;
    bool closes = true;
    bool tellsItsLength = true;
    bool isLostOnceRead = false; // nothing is there where it has been read before, since it was opened

    Bytes length() const { return static_cast<Bytes>(letters.size() * kLetter) + tail; }
    char letterAt(Bytes offset) const {
        const auto at = static_cast<std::size_t>(offset) / kLetter;
        return at < letters.size() ? letters[at] : letters.empty() ? 'z' : letters.back();
    }
};

// Files that exist nowhere and can only be opened.
class MadeUpFiles final : public ForwardingFileSystem {
  public:
    MadeUpFiles()
        : ForwardingFileSystem(m_nothing) {}

    FileURL add(const std::string& name, MadeUpFile file) {
        FileURL url("/Users/alex/Documents/" + name);
        m_files.insert_or_assign(url, std::move(file));
        return url;
    }
    // Runs before each read, with its offset, on the reader's thread. Set before reading begins.
    void beforeEachRead(std::function<void(Bytes)> hook) { m_beforeRead = std::move(hook); }
    int reads() const { return m_reads; }
    // How many were open at a time at most.
    int mostOpen() const { return m_mostOpen; }

    Result<std::unique_ptr<OpenFile>> openForReading(const FileURL& url) const override {
        const auto& file = m_files.at(url);
        if (!file.opens) {
            return PlatformError{ErrorCode::kReadNoPermission, EACCES};
        }
        return std::unique_ptr<OpenFile>(std::make_unique<Opened>(*this, file));
    }

  private:
    static constexpr PlatformError kFailure = {ErrorCode::kReadUnknown, EIO};

    class Opened final : public OpenFile {
      public:
        Opened(const MadeUpFiles& files, const MadeUpFile& file)
            : m_files(files)
            , m_file(file) {
            // One thread at a time opens in the tests that ask.
            m_files.m_mostOpen = std::max(m_files.m_mostOpen.load(), ++m_files.m_open);
        }
        ~Opened() override { --m_files.m_open; }
        Opened(const Opened&) = delete;
        Opened& operator=(const Opened&) = delete;

        Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
            ++m_files.m_reads;
            if (m_files.m_beforeRead) {
                m_files.m_beforeRead(offset);
            }
            const auto end = std::min(offset + static_cast<Bytes>(buffer.size()), m_file.length());
            const bool isReadAgain = offset < m_readUpTo;
            if (isReadAgain && m_file.isLostOnceRead) {
                return std::size_t{0};
            }
            m_readUpTo = std::max(m_readUpTo, offset + static_cast<Bytes>(buffer.size()));
            if (m_file.badByte && *m_file.badByte >= offset && *m_file.badByte < end) {
                return kFailure;
            }
            constexpr auto kLetter = static_cast<Bytes>(MadeUpFile::kLetter);
            for (auto at = offset; at < end;) {
                const auto stop = std::min((at / kLetter + 1) * kLetter, end);
                std::memset(buffer.data() + (at - offset), m_file.letterAt(at),
                            static_cast<std::size_t>(stop - at));
                at = stop;
            }
            return static_cast<std::size_t>(std::max<Bytes>(0, end - offset));
        }
        Result<Bytes> length() override {
            return m_file.tellsItsLength ? Result<Bytes>(m_file.length()) : Result<Bytes>(kFailure);
        }
        Result<> close() override { return m_file.closes ? success() : Result<>(kFailure); }

      private:
        const MadeUpFiles& m_files;
        const MadeUpFile& m_file;
        Bytes m_readUpTo = 0;
    };

    PosixFileSystem m_nothing{"/nowhere", FileURL("/Users/alex")};
    std::map<FileURL, MadeUpFile> m_files;
    std::function<void(Bytes)> m_beforeRead;
    mutable std::atomic<int> m_reads = 0;
    mutable std::atomic<int> m_open = 0;
    mutable std::atomic<int> m_mostOpen = 0;
};

} // namespace quillane
