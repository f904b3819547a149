#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillane {

// Gathers the text of a document as a person reads it, so that words and phrases are found however they were set:
// any run of white space, a fixed space and the end of a line or a paragraph among it, is one blank, and soft hyphens
// are nothing. There is no blank at the beginning and none at the end.
class TextSink {
  public:
    // Takes `mostBytes` and a character more at most; what comes later is dropped.
    explicit TextSink(std::size_t mostBytes)
        : m_mostBytes(mostBytes) {}

    // UTF-8 in whole characters; bytes that are none stay as they are.
    void add(std::string_view text);
    void addCodePoint(std::uint32_t codePoint);
    // What stood before is a word of its own.
    void endWord() { m_isApart = true; }

    bool isFull() const { return m_text.size() >= m_mostBytes; }
    const std::string& text() const { return m_text; }
    std::string take() { return std::move(m_text); }

  private:
    void append(std::string_view characters);

    std::size_t m_mostBytes;
    std::string m_text;
    bool m_isApart = false;
};

} // namespace quillane
