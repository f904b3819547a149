#include "BulkAnswer.h"
#include <array>
#include <cstring>
#include <span>

namespace quillane {
namespace {

constexpr std::size_t kEntryAlignment = 8;

template <class Field>
void append(std::vector<std::byte>& bytes, const Field& field) {
    const auto raw = std::as_bytes(std::span(&field, 1));
    bytes.insert(bytes.end(), raw.begin(), raw.end());
}

template <class Field>
void appendIf(std::vector<std::byte>& bytes, const std::optional<Field>& field) {
    if (field) {
        append(bytes, *field);
    }
}

void write(std::vector<std::byte>& bytes, std::size_t at, std::uint32_t value) {
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

// The five groups: of all, of volumes, of folders, of files, of forks.
std::array<std::uint32_t, 5> returned(const BulkAnswer::Entry& entry) {
    std::array<std::uint32_t, 5> groups{0x80000000U | 0x1U, 0, 0, 0, 0};
    groups[0] |= entry.error ? 0x20000000U : 0U;
    groups[0] |= entry.type ? 0x8U : 0U;
    groups[0] |= entry.finderFlags ? 0x4000U : 0U;
    groups[0] |= entry.flags ? 0x40000U : 0U;
    groups[2] |= entry.mountStatus ? 0x4U : 0U;
    groups[3] |= entry.allocated ? 0x4U : 0U;
    return groups;
}

// Two words for who made it and for whom, then the flags, the most significant byte first.
std::array<std::uint8_t, 32> finderInfo(std::uint16_t flags) {
    std::array<std::uint8_t, 32> info{};
    info[8] = static_cast<std::uint8_t>(flags >> 8U);
    info[9] = static_cast<std::uint8_t>(flags & 0xFFU);
    return info;
}

} // namespace

BulkAnswer& BulkAnswer::add(const Entry& entry) {
    std::vector<std::byte> bytes;
    append(bytes, std::uint32_t{0}); // the length, written below
    append(bytes, returned(entry));
    appendIf(bytes, entry.error);
    const auto nameField = bytes.size();
    append(bytes, std::array<std::uint32_t, 2>{});
    appendIf(bytes, entry.type);
    if (entry.finderFlags) {
        append(bytes, finderInfo(*entry.finderFlags));
    }
    appendIf(bytes, entry.flags);
    appendIf(bytes, entry.mountStatus);
    appendIf(bytes, entry.allocated);
    write(bytes, nameField, static_cast<std::uint32_t>(bytes.size() - nameField));
    write(bytes, nameField + 4, static_cast<std::uint32_t>(entry.name.size() + 1));
    const auto name = std::as_bytes(std::span(entry.name));
    bytes.insert(bytes.end(), name.begin(), name.end());
    bytes.resize((bytes.size() + kEntryAlignment) / kEntryAlignment * kEntryAlignment); // one NUL at least
    write(bytes, 0, static_cast<std::uint32_t>(bytes.size()));
    m_begins.push_back(m_bytes.size());
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

BulkAnswer& BulkAnswer::overwrite(std::size_t entry, std::size_t word, std::uint32_t value) {
    write(m_bytes, begin(entry) + word * sizeof value, value);
    return *this;
}

} // namespace quillane
