#include "TextFileSearch.h"
#include <algorithm>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillane::TextFileSearch {
namespace {

using Portion = FoldedNeedle::Portion;

// The window that slides over a file: what was kept of one portion, and behind it the next.
class Window {
  public:
    // Room for another portion; the memory of the last file serves again.
    explicit Window(std::size_t mostKept) {
        if (m_bytes.size() < mostKept + kPortion) {
            m_bytes.resize(mostKept + kPortion);
        }
    }

    std::span<std::byte> free() const {
        return std::as_writable_bytes(std::span(m_bytes.data() + m_length, kPortion));
    }
    void add(std::size_t count) { m_length += count; }
    std::string_view text() const { return {m_bytes.data(), m_length}; }
    void keepLast(std::size_t count) {
        const auto kept = std::min(count, m_length);
        std::memmove(m_bytes.data(), m_bytes.data() + (m_length - kept), kept);
        m_length = kept;
    }

  private:
    static thread_local std::vector<char> m_bytes;
    std::size_t m_length = 0;
};

thread_local std::vector<char> Window::m_bytes;

class Search {
  public:
    Search(const FoldedNeedle& needle, OpenFile& file, const StopToken& stop, PlainText::Claim claim)
        : m_needle(needle)
        , m_file(file)
        , m_stop(stop)
        , m_claim(claim)
        , m_window(needle.overlap()) {}

    bool occurs() {
        if (!readPortion()) {
            return false;
        }
        if (m_claim == PlainText::Claim::none) {
            m_format = PlainText::formatOf(m_window.text(), m_claim, m_isAtEnd);
        } else if (const auto marked = PlainText::markedFormatOf(m_window.text())) {
            m_format = *marked;
        } else if (!decideWhereItMatters()) {
            return false;
        }
        switch (m_format.encoding) {
        case PlainText::Encoding::none:
            return false;
        case PlainText::Encoding::utf8:
            return occursInBytes(&FoldedNeedle::occursIn);
        default:
            return occursInDecoded();
        }
    }

  private:
    // False where nothing came; `m_isAtEnd` when nothing more will.
    bool readPortion() {
        if (m_stop.stopRequested()) {
            return false;
        }
        const auto count = m_file.readAt(m_window.free(), m_offset);
        if (!count || *count == 0) {
            return false;
        }
        m_window.add(*count);
        m_offset += static_cast<Bytes>(*count);
        m_isAtEnd = *count < kPortion || m_offset >= kMostBytes;
        return true;
    }

    Portion portion() const {
        if (m_isFirst) {
            return m_isAtEnd ? Portion::whole : Portion::first;
        }
        return m_isAtEnd ? Portion::last : Portion::middle;
    }

    // UTF-8 or Latin-1 is a question that all of the first portion answers, and most files need no answer. False where
    // the needle occurs in neither; else the search stands before the first portion.
    bool decideWhereItMatters() {
        if (!occursInBytes(&FoldedNeedle::mayOccurInUnknown)) {
            return false;
        }
        if (!m_isFirst) {
            m_window.keepLast(0);
            m_offset = 0;
            m_isFirst = true;
            if (!readPortion()) {
                return false;
            }
        }
        m_format = PlainText::formatOf(m_window.text(), PlainText::Claim::declared, m_isAtEnd);
        return true;
    }

    bool occursInBytes(bool (FoldedNeedle::*occurs)(std::string_view, Portion) const) {
        do {
            const auto text = m_window.text().substr(m_isFirst ? m_format.mark : 0);
            if ((m_needle.*occurs)(text, portion())) {
                return true;
            }
            m_isFirst = false;
            m_window.keepLast(m_needle.overlap());
        } while (!m_isAtEnd && readPortion());
        // A file whose length is a multiple of a portion tells its end only by an empty one.
        return !m_isAtEnd && !m_stop.stopRequested() && (m_needle.*occurs)(m_window.text(), Portion::last);
    }

    bool occursInDecoded() {
        std::string text;
        do {
            auto part = m_window.text().substr(m_isFirst ? m_format.mark : 0);
            const auto cut = m_isAtEnd ? 0 : cutBytes(part);
            part.remove_suffix(cut);
            text += PlainText::decoded(part, m_format.encoding);
            if (m_needle.occursIn(text, portion())) {
                return true;
            }
            m_isFirst = false;
            m_window.keepLast(cut);
            text.erase(0, text.size() - std::min(text.size(), m_needle.overlap()));
        } while (!m_isAtEnd && readPortion());
        return !m_isAtEnd && !m_stop.stopRequested() && m_needle.occursIn(text, Portion::last);
    }

    // Of a pair of units that the end of the part divides, and of a unit.
    std::size_t cutBytes(std::string_view part) const {
        if (m_format.encoding == PlainText::Encoding::latin1) {
            return 0;
        }
        const auto odd = part.size() % 2;
        if (part.size() < 2) {
            return odd;
        }
        const auto unit = part.substr(part.size() - odd - 2, 2);
        const bool isBig = m_format.encoding == PlainText::Encoding::utf16BigEndian;
        const auto high = static_cast<unsigned char>(isBig ? unit[0] : unit[1]);
        return odd + (high >= 0xD8 && high <= 0xDB ? 2 : 0);
    }

    const FoldedNeedle& m_needle;
    OpenFile& m_file;
    const StopToken& m_stop;
    PlainText::Claim m_claim;
    Window m_window;
    PlainText::Format m_format;
    Bytes m_offset = 0;
    bool m_isFirst = true;
    bool m_isAtEnd = false;
};

} // namespace

bool occurs(const FoldedNeedle& needle, const FileSystem& files, const FileURL& file, const StopToken& stop,
            PlainText::Claim claim) {
    if (stop.stopRequested()) {
        return false;
    }
    const auto opened = files.openForReading(file);
    return opened && Search(needle, **opened, stop, claim).occurs();
}

} // namespace quillane::TextFileSearch
