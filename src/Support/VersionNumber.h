#pragma once
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

// The number of a version: whole numbers parted by dots, compared number by number, so that 1.10 is newer than 1.9.
// What is not written counts as zero: 1.2 and 1.2.0 are the same.
class VersionNumber {
  public:
    static constexpr std::size_t kMostParts = 6;
    static constexpr std::size_t kMostDigits = 9; // of a part

    // Nothing for what is not such a text to the letter: no signs, no spaces, no words, no zeros in front.
    static std::optional<VersionNumber> parse(std::string_view text);

    // As it was written.
    const std::string& text() const { return m_text; }

    friend std::strong_ordering operator<=>(const VersionNumber& a, const VersionNumber& b);
    friend bool operator==(const VersionNumber& a, const VersionNumber& b) { return (a <=> b) == 0; }

  private:
    VersionNumber(std::string_view text, std::vector<std::uint32_t> parts)
        : m_text(text)
        , m_parts(std::move(parts)) {}

    std::string m_text;
    std::vector<std::uint32_t> m_parts; // without zeros at the end
};

} // namespace quillane
