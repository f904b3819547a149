#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// An answer of Darwin's getattrlistbulk(2), laid by hand. It knows nothing of its reader, the numbers of attributes
// among it.
class BulkAnswer {
  public:
    static constexpr std::uint32_t kRegular = 1;
    static constexpr std::uint32_t kFolder = 2;
    static constexpr std::uint32_t kLink = 5;
    static constexpr std::uint32_t kHidden = 0x8000;
    static constexpr std::uint32_t kFirmlink = 0x800000;
    static constexpr std::uint16_t kInvisible = 0x4000;
    static constexpr std::uint16_t kBundle = 0x2000;

    // What has no value is not returned, and takes no room.
    struct Entry {
        std::string name;
        std::optional<std::uint32_t> error = std::nullopt;
        std::optional<std::uint32_t> type = std::nullopt;
        std::optional<std::uint16_t> finderFlags = std::nullopt;
        std::optional<std::uint32_t> flags = std::nullopt;
        std::optional<std::uint32_t> mountStatus = std::nullopt; // of a folder
        std::optional<std::int64_t> allocated = std::nullopt;    // of a file
    };

    BulkAnswer() = default;
    BulkAnswer(std::initializer_list<Entry> entries) {
        for (const auto& entry : entries) {
            add(entry);
        }
    }

    BulkAnswer& add(const Entry& entry);
    const std::vector<std::byte>& bytes() const { return m_bytes; }
    std::size_t count() const { return m_begins.size(); }
    // Where an entry begins.
    std::size_t begin(std::size_t entry) const { return m_begins.at(entry); }
    // Writes over a word of an entry: its length, the five of what was returned, and so on.
    BulkAnswer& overwrite(std::size_t entry, std::size_t word, std::uint32_t value);

    // The words of an entry without an error.
    static constexpr std::size_t kLength = 0;
    static constexpr std::size_t kReturned = 1;
    static constexpr std::size_t kNameOffset = 6;
    static constexpr std::size_t kNameLength = 7;

  private:
    std::vector<std::byte> m_bytes;
    std::vector<std::size_t> m_begins;
};

} // namespace quillane
