#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The byte level of text: checking UTF-8 and turning other encodings into it. Any thread.
namespace quillane::Utf8 {

// True for well-formed UTF-8: no overlong form, no surrogate, nothing above U+10FFFF, nothing cut off.
bool isValid(std::string_view text);

// Less a last character that has begun and is not complete.
std::string_view withoutCutCharacter(std::string_view text);

// Appends one code point; U+FFFD for a surrogate and for what lies above U+10FFFF.
void append(std::string& text, std::uint32_t codePoint);

enum class ByteOrder { bigEndian, littleEndian };

// From UTF-16 without a byte order mark. A surrogate without its partner becomes U+FFFD; an odd last byte is
// dropped.
std::string fromUtf16(std::string_view bytes, ByteOrder order);

std::string fromLatin1(std::string_view bytes);

// Joins UTF-16 units that come one at a time, as escapes do.
class Utf16Joiner {
  public:
    explicit Utf16Joiner(std::string& text)
        : m_text(text) {}
    void add(std::uint16_t unit);
    // A high surrogate that waits for its partner becomes U+FFFD. Call before appending to the text directly
    // and at the end.
    void flush();

  private:
    std::string& m_text;
    std::optional<std::uint16_t> m_high;
};

} // namespace quillane::Utf8
