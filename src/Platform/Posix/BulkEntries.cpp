#include "BulkEntries.h"
#include <array>
#include <cstring>

namespace quillane {
namespace {

using Attribute = BulkEntries::Attribute;
using Value = BulkEntries::Value;

constexpr std::uint32_t kKnownCommon = Attribute::kReturned | Attribute::kError | Attribute::kName |
                                       Attribute::kObjectType | Attribute::kFinderInfo | Attribute::kFlags;

// Which attributes an entry has, one word for each group.
struct Returned {
    std::uint32_t common;
    std::uint32_t volume;
    std::uint32_t folder;
    std::uint32_t file;
    std::uint32_t extended;

    bool holdsOnlyKnown() const {
        return (common & ~kKnownCommon) == 0 && volume == 0 &&
               (folder & ~Attribute::kFolderMountStatus) == 0 &&
               (file & ~Attribute::kFileAllocatedSize) == 0 && extended == 0;
    }
};

// Where a name lies: its bytes with their NUL, from this field on.
struct NameField {
    std::int32_t offset;
    std::uint32_t length;
};

// The Finder's flags are the fifth pair of bytes, for files and folders alike.
using FinderInfo = std::array<std::uint8_t, 32>;
constexpr std::size_t kFinderFlags = 8;

// One entry, field after field. Fields are aligned to 4 bytes, whatever their kind.
class Fields {
  public:
    explicit Fields(std::span<const std::byte> entry)
        : m_entry(entry) {}

    // False when the entry ends before.
    template <class Field>
    bool take(Field& field) {
        if (m_entry.size() - m_at < sizeof field) {
            return false;
        }
        std::memcpy(&field, m_entry.data() + m_at, sizeof field);
        m_at += sizeof field;
        return true;
    }
    // A field that is there when its bit is set; false only when it should be and is not.
    template <class Field>
    bool take(std::uint32_t returned, std::uint32_t bit, Field& field) {
        return (returned & bit) == 0 || take(field);
    }
    bool takeName(RawEntry& entry) {
        const auto begin = m_at;
        NameField field{};
        return take(field) && read(begin, field, entry);
    }

  private:
    // `begin` is where the field itself begins.
    bool read(std::size_t begin, const NameField& field, RawEntry& entry) const {
        const auto first = static_cast<std::int64_t>(begin) + field.offset;
        const auto end = first + static_cast<std::int64_t>(field.length);
        if (first < 0 || field.length < 2 || end > static_cast<std::int64_t>(m_entry.size())) {
            return false;
        }
        entry.name = reinterpret_cast<const char*>(m_entry.data()) + first;
        entry.length = field.length - 1;
        return std::memchr(entry.name, '\0', field.length) == entry.name + entry.length;
    }

    std::span<const std::byte> m_entry;
    std::size_t m_at = 0;
};

// What one entry tells, as it comes.
struct Told {
    std::uint32_t error = 0;
    std::uint32_t type = 0;
    FinderInfo finder{};
    std::uint32_t flags = 0;
    std::uint32_t mountStatus = 0;
    std::int64_t allocated = -1;

    // False when the entry ends before.
    bool takeFrom(Fields& fields, const Returned& returned) {
        return fields.take(returned.common, Attribute::kObjectType, type) &&
               fields.take(returned.common, Attribute::kFinderInfo, finder) &&
               fields.take(returned.common, Attribute::kFlags, flags) &&
               fields.take(returned.folder, Attribute::kFolderMountStatus, mountStatus) &&
               fields.take(returned.file, Attribute::kFileAllocatedSize, allocated);
    }
    bool isOfWhatLiesBehind() const {
        return (mountStatus & Value::kIsMountPoint) == 0 && (flags & Value::kIsFirmlink) == 0;
    }
    bool hasFinderFlag(std::uint16_t flag) const {
        const auto finderFlags =
            static_cast<std::uint32_t>(finder[kFinderFlags]) << 8U | finder[kFinderFlags + 1];
        return (finderFlags & flag) != 0;
    }
    std::optional<EntryType> entryType() const {
        switch (type) {
        case Value::kRegular:
            return EntryType::regular;
        case Value::kFolder:
            return EntryType::directory;
        case Value::kLink:
            return EntryType::symbolicLink;
        default:
            return type > 0 && type <= Value::kPipe ? std::optional(EntryType::other) : std::nullopt;
        }
    }
};

bool isTold(std::string_view name) {
    return name != "." && name != ".." && name.find('/') == std::string_view::npos;
}

void fill(RawEntry& entry, const Told& told) {
    entry.type = told.entryType();
    entry.isFlaggedHidden = (told.flags & Value::kIsHidden) != 0 || told.hasFinderFlag(Value::kIsInvisible);
    entry.isMarkedAsPackage = entry.type == EntryType::directory && told.hasFinderFlag(Value::kHasBundle);
    if (entry.type == EntryType::regular && told.allocated >= 0) {
        entry.allocated = told.allocated;
    }
}

// False for what is no entry.
bool parse(std::span<const std::byte> bytes, RawEntry& entry) {
    Fields fields(bytes);
    std::uint32_t length = 0;
    Returned returned{};
    Told told;
    entry = {};
    if (!fields.take(length) || !fields.take(returned) ||
        !fields.take(returned.common, Attribute::kError, told.error) ||
        (returned.common & Attribute::kName) == 0 || !fields.takeName(entry) ||
        !isTold({entry.name, entry.length})) {
        return false;
    }
    if (told.error == 0 && returned.holdsOnlyKnown() && told.takeFrom(fields, returned) &&
        told.isOfWhatLiesBehind()) {
        fill(entry, told);
    }
    return true;
}

} // namespace

std::span<const std::byte> BulkEntries::take() {
    std::uint32_t length = 0;
    if (m_count == 0 || m_rest.size() < sizeof length) {
        return {};
    }
    std::memcpy(&length, m_rest.data(), sizeof length);
    if (length < sizeof length || length > m_rest.size()) {
        m_count = 0;
        return {};
    }
    const auto entry = m_rest.first(length);
    m_rest = m_rest.subspan(length);
    --m_count;
    return entry;
}

void BulkEntries::skip(std::size_t count) {
    while (count > 0 && !take().empty()) {
        --count;
    }
}

bool BulkEntries::next(RawEntry& entry) {
    for (auto bytes = take(); !bytes.empty(); bytes = take()) {
        if (parse(bytes, entry)) {
            return true;
        }
    }
    return false;
}

} // namespace quillane
