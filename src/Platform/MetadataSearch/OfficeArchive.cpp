#include "OfficeArchive.h"
#include "Bytes.h"
#include "FileSystem.h"
#include "OfficeText.h"
#include "StopToken.h"
#include "TextSink.h"
#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quillane::OfficeArchive {
namespace {

struct Free {
    void operator()(archive* reader) const { ::archive_read_free(reader); }
};
using Reader = std::unique_ptr<archive, Free>;

constexpr std::size_t kStep = std::size_t{64} << 10U; // what is read at a time

// The file as the library asks for it.
class Source {
  public:
    Source(OpenFile& file, Bytes length, StopToken stop)
        : m_file(file)
        , m_length(length)
        , m_stop(std::move(stop)) {}

    // From now on no more than so many bytes are given, and none once a stop is requested.
    void allow(std::size_t bytes) { m_left = bytes; }

    Result<std::span<const std::byte>> next() {
        if (m_stop.stopRequested()) {
            m_hasFailed = true;
            return PlatformError{ErrorCode::kUserCancelled, std::nullopt};
        }
        if (m_left == 0) {
            return PlatformError{ErrorCode::kReadTooLarge, std::nullopt};
        }
        auto count = m_file.readAt(m_buffer, m_offset);
        if (!count) {
            m_hasFailed = true;
            return count.error();
        }
        m_offset += static_cast<Bytes>(*count);
        m_left -= std::min(m_left, *count);
        return std::span<const std::byte>(m_buffer).first(*count);
    }

    bool hasFailed() const { return m_hasFailed; }

    // The new offset, or nothing for a place that the file does not have.
    std::optional<Bytes> seek(Bytes offset, int whence) {
        const Bytes from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_offset : m_length;
        if (offset < -from || offset > m_length - from) {
            return std::nullopt;
        }
        return m_offset = from + offset;
    }

  private:
    OpenFile& m_file;
    Bytes m_length;
    StopToken m_stop;
    Bytes m_offset = 0;
    std::size_t m_left = 0;
    bool m_hasFailed = false;
    std::array<std::byte, kStep> m_buffer;
};

la_ssize_t readNext(archive* reader, void* client, const void** buffer) {
    const auto bytes = static_cast<Source*>(client)->next();
    if (!bytes) {
        ::archive_set_error(reader, EIO, "read");
        return ARCHIVE_FATAL;
    }
    *buffer = bytes->data();
    return static_cast<la_ssize_t>(bytes->size());
}

la_int64_t seekTo(archive* /*reader*/, void* client, la_int64_t offset, int whence) {
    return static_cast<Source*>(client)->seek(offset, whence).value_or(ARCHIVE_FATAL);
}

Reader opened(Source& source) {
    Reader reader(::archive_read_new());
    const bool isOpen = reader != nullptr &&
                        ::archive_read_support_format_zip_seekable(reader.get()) == ARCHIVE_OK &&
                        ::archive_read_set_read_callback(reader.get(), readNext) == ARCHIVE_OK &&
                        ::archive_read_set_seek_callback(reader.get(), seekTo) == ARCHIVE_OK &&
                        ::archive_read_set_callback_data(reader.get(), &source) == ARCHIVE_OK &&
                        ::archive_read_open1(reader.get()) == ARCHIVE_OK;
    return isOpen ? std::move(reader) : nullptr;
}

// Office documents are deflated or stored. What else the library unpacks may ask for gigabytes of memory.
bool isPackedAsUsual(archive* reader, archive_entry* member) {
    const char* const format = ::archive_format_name(reader);
    const std::string_view name = format == nullptr ? "" : format;
    return ::archive_entry_is_encrypted(member) == 0 &&
           (name.ends_with("(deflation)") || name.ends_with("(uncompressed)"));
}

// The first `most` bytes of the member, or those before its damage.
std::string unpacked(archive* reader, std::size_t most) {
    constexpr std::size_t kUnpackedStep = std::size_t{256} << 10U;
    std::string bytes;
    while (bytes.size() < most) {
        const auto before = bytes.size();
        bytes.resize(before + std::min(kUnpackedStep, most - before));
        const auto count = ::archive_read_data(reader, bytes.data() + before, bytes.size() - before);
        bytes.resize(before + static_cast<std::size_t>(std::max<la_ssize_t>(count, 0)));
        if (count <= 0) {
            break;
        }
    }
    return bytes;
}

class Members {
  public:
    Members(archive* reader, const Limits& limits, TextSink& sink)
        : m_reader(reader)
        , m_limits(limits)
        , m_sink(sink) {}

    void add(archive_entry* member) {
        const char* const name = ::archive_entry_pathname(member);
        const auto part = name == nullptr ? std::nullopt : OfficeText::partNamed(name);
        if (!part || !isPackedAsUsual(m_reader, member)) {
            return;
        }
        auto& left = *part == OfficeText::Part::sheet ? m_leftOfSheets : m_leftOfWords;
        const auto xml = unpacked(m_reader, std::min(left, m_limits.member));
        left -= xml.size();
        OfficeText::add(xml, *part, m_sink);
    }

  private:
    archive* m_reader;
    const Limits& m_limits;
    TextSink& m_sink;
    std::size_t m_leftOfWords = m_limits.words;
    std::size_t m_leftOfSheets = m_limits.sheets;
};

// Members may quote each other: all of them together get the file once, and a step for each to be found in.
void addMembers(Source& source, const Limits& limits, const StopToken& stop, TextSink& sink) {
    source.allow(limits.directory);
    const auto reader = opened(source);
    if (reader == nullptr) {
        return;
    }
    Members members(reader.get(), limits, sink);
    archive_entry* member = nullptr;
    for (int i = 0; i < limits.members && !sink.isFull() && !stop.stopRequested(); ++i) {
        const int found = ::archive_read_next_header(reader.get(), &member);
        if (found != ARCHIVE_OK && found != ARCHIVE_WARN) {
            return;
        }
        if (i == 0) { // the directory has been read
            source.allow(limits.file + static_cast<std::size_t>(limits.members) * kStep);
        }
        members.add(member);
    }
}

} // namespace

bool add(OpenFile& file, const Limits& limits, const StopToken& stop, TextSink& sink) {
    const auto length = file.length();
    if (!length || *length > static_cast<Bytes>(limits.file)) {
        return length.ok();
    }
    const auto source =
        std::make_unique<Source>(file, *length, stop); // too large for the stack of a pool's thread
    addMembers(*source, limits, stop, sink);
    return !source->hasFailed();
}

} // namespace quillane::OfficeArchive
