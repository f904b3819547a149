// The binary form: a header of 8 bytes, the objects, a table with the offset of each, and a trailer of 32
// bytes that tells where everything is. Containers name their children by number, so the objects form a
// graph; here it is written out as a tree, and a graph that is cyclic or too large when written out meets the
// limits of the builder.
#include "PropertyListBuilder.h"
#include "Utf8.h"
#include <algorithm>
#include <bit>
#include <limits>

namespace quillane::PropertyList::Detail {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;

// The kind of an object stands in the upper half of its first byte, a size or count in the lower half.
enum Marker : unsigned {
    kSimple = 0x0,
    kInteger = 0x1,
    kReal = 0x2,
    kDate = 0x3,
    kData = 0x4,
    kAsciiString = 0x5,
    kUtf16String = 0x6,
    kReference = 0x8, // of an archive
    kArray = 0xA,
    kOrderedSet = 0xB,
    kSet = 0xC,
    kDictionary = 0xD
};

// A number of 1 to 8 bytes, the most significant first.
std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

class Reader {
  public:
    Reader(std::string_view bytes, const Limits& limits)
        : m_bytes(bytes)
        , m_builder(limits) {}

    std::optional<Value> read() {
        if (!readTrailer() || !addObject(m_topObject)) {
            return std::nullopt;
        }
        while (!m_open.empty()) {
            if (!step()) {
                return std::nullopt;
            }
        }
        return m_builder.take();
    }

  private:
    // A container whose children are being added.
    struct Open {
        std::size_t references; // where the numbers of its children begin; for a dictionary those of its keys
        std::size_t count;
        std::size_t next;
        bool isDictionary;
    };

    // One object as it lies in the file: what its first byte says, and where its content begins.
    struct Head {
        unsigned marker;
        unsigned info;
        std::size_t content;
    };

    bool readTrailer() {
        if (m_bytes.size() < kHeaderSize + kTrailerSize) {
            return false;
        }
        const auto trailer = m_bytes.substr(m_bytes.size() - kTrailerSize);
        m_offsetSize = static_cast<unsigned char>(trailer[6]);
        m_referenceSize = static_cast<unsigned char>(trailer[7]);
        m_objectCount = bigEndian(trailer.substr(8, 8));
        m_topObject = bigEndian(trailer.substr(16, 8));
        const std::uint64_t table = bigEndian(trailer.substr(24, 8));
        const std::uint64_t tableEnd = m_bytes.size() - kTrailerSize;
        const auto isNumberSize = [](std::size_t size) { return size >= 1 && size <= sizeof(std::uint64_t); };
        if (!isNumberSize(m_offsetSize) || !isNumberSize(m_referenceSize) || table > tableEnd ||
            m_objectCount == 0 || m_objectCount > (tableEnd - table) / m_offsetSize) {
            return false;
        }
        m_table = static_cast<std::size_t>(table);
        return true;
    }

    // `count` bytes from `at` that belong to objects; nothing when they reach into the table or beyond.
    std::optional<std::string_view> bytesAt(std::size_t at, std::uint64_t count) const {
        if (at > m_table || count > m_table - at) {
            return std::nullopt;
        }
        return m_bytes.substr(at, static_cast<std::size_t>(count));
    }

    // Takes the length that follows a first byte whose lower half had no room for it.
    std::optional<std::uint64_t> longCount(Head& head) const {
        constexpr unsigned kInteger64 = 3; // the largest of the integers that may tell a length
        const auto first = bytesAt(head.content, 1);
        if (!first) {
            return std::nullopt;
        }
        const unsigned byte = static_cast<unsigned char>(first->front());
        const unsigned power = byte & 0xFU;
        const auto number = bytesAt(head.content + 1, std::uint64_t{1} << power);
        if (byte >> 4U != kInteger || power > kInteger64 || !number) {
            return std::nullopt;
        }
        head.content += 1 + number->size();
        return bigEndian(*number);
    }

    // How many bytes, units or children the object has.
    std::optional<std::uint64_t> countOf(Head& head) const {
        constexpr unsigned kCountFollows = 0xF;
        return head.info == kCountFollows ? longCount(head) : std::optional<std::uint64_t>(head.info);
    }

    std::optional<Head> headOf(std::uint64_t object) const {
        if (object >= m_objectCount) {
            return std::nullopt;
        }
        const auto entry = m_table + static_cast<std::size_t>(object) * m_offsetSize;
        const auto offset = bigEndian(m_bytes.substr(entry, m_offsetSize));
        if (offset < kHeaderSize || offset >= m_table) {
            return std::nullopt;
        }
        const auto at = static_cast<std::size_t>(offset);
        const unsigned byte = static_cast<unsigned char>(m_bytes[at]);
        return Head{byte >> 4U, byte & 0xFU, at + 1};
    }

    // Goes on with the innermost open container: its next child, or its end.
    bool step() {
        auto& open = m_open.back();
        if (open.next == open.count) {
            m_open.pop_back();
            return m_builder.close();
        }
        const auto index = open.next++;
        if (!open.isDictionary) {
            return addObject(referenceAt(open.references, index));
        }
        auto key = stringOf(referenceAt(open.references, index));
        return key && m_builder.key(*std::move(key)) &&
               addObject(referenceAt(open.references, open.count + index));
    }

    // Callers have made sure that the reference lies among the objects.
    std::uint64_t referenceAt(std::size_t references, std::size_t index) const {
        return bigEndian(m_bytes.substr(references + index * m_referenceSize, m_referenceSize));
    }

    std::optional<std::string> stringOf(std::uint64_t object) const {
        auto head = headOf(object);
        return head ? stringFrom(*head) : std::nullopt;
    }

    // Nothing for an object that is no string or damaged.
    std::optional<std::string> stringFrom(Head head) const {
        if (!isText(head.marker)) {
            return std::nullopt;
        }
        const auto count = countOf(head);
        const bool isWide = head.marker == kUtf16String;
        if (!count || *count > m_table) { // the second keeps the doubling from overflowing
            return std::nullopt;
        }
        const auto bytes = bytesAt(head.content, isWide ? *count * 2 : *count);
        if (!bytes) {
            return std::nullopt;
        }
        if (isWide) {
            return Utf8::fromUtf16(*bytes, Utf8::ByteOrder::bigEndian);
        }
        const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
        return std::ranges::all_of(*bytes, isAscii) ? std::optional(std::string(*bytes)) : std::nullopt;
    }

    bool addObject(std::uint64_t object) {
        const auto head = headOf(object);
        if (!head) {
            return false;
        }
        switch (head->marker) {
        case kSimple:
            return addSimple(head->info);
        case kInteger:
            return addInteger(*head);
        case kReal:
            return addReal(*head);
        case kDate:
            return addDate(*head);
        case kData:
            return addData(*head);
        case kAsciiString:
        case kUtf16String: {
            auto text = stringFrom(*head);
            return text && m_builder.addString(*std::move(text));
        }
        case kReference:
            return bytesAt(head->content, head->info + 1U) && m_builder.add(Opaque{});
        case kArray:
        case kOrderedSet:
        case kSet:
        case kDictionary:
            return openContainer(*head);
        default:
            return false;
        }
    }

    bool addSimple(unsigned info) {
        constexpr unsigned kNull = 0x0;
        constexpr unsigned kFalse = 0x8;
        constexpr unsigned kTrue = 0x9;
        switch (info) {
        case kNull:
            return m_builder.add(Opaque{});
        case kFalse:
            return m_builder.add(false);
        case kTrue:
            return m_builder.add(true);
        default:
            return false;
        }
    }

    // Numbers of 1, 2 and 4 bytes have no sign, one of 8 has, and one of 16 is what does not fit in 8.
    bool addInteger(const Head& head) {
        constexpr unsigned kInteger128 = 4;
        const auto bytes = bytesAt(head.content, std::uint64_t{1} << head.info);
        if (head.info > kInteger128 || !bytes) {
            return false;
        }
        const auto low = bigEndian(bytes->substr(bytes->size() > 8 ? 8 : 0));
        const auto asSigned = static_cast<std::int64_t>(low);
        if (head.info < kInteger128) {
            return m_builder.add(asSigned);
        }
        const auto high = bigEndian(bytes->substr(0, 8));
        if (high == 0) {
            return asSigned < 0 ? m_builder.add(BigNumber{low}) : m_builder.add(asSigned);
        }
        const bool isNegativeInt = high == std::numeric_limits<std::uint64_t>::max() && asSigned < 0;
        return isNegativeInt && m_builder.add(asSigned);
    }

    bool addReal(const Head& head) {
        constexpr unsigned kFloat = 2;
        constexpr unsigned kDouble = 3;
        const auto bytes = bytesAt(head.content, std::uint64_t{1} << head.info);
        if ((head.info != kFloat && head.info != kDouble) || !bytes) {
            return false;
        }
        const auto bits = bigEndian(*bytes);
        return m_builder.add(head.info == kFloat
                                 ? static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits)))
                                 : std::bit_cast<double>(bits));
    }

    bool addDate(const Head& head) {
        constexpr unsigned kDouble = 3;
        const auto bytes = bytesAt(head.content, sizeof(double));
        return head.info == kDouble && bytes && m_builder.add(Date{std::bit_cast<double>(bigEndian(*bytes))});
    }

    bool addData(Head head) {
        const auto count = countOf(head);
        const auto bytes = count ? bytesAt(head.content, *count) : std::nullopt;
        return bytes && m_builder.addData(std::string(*bytes));
    }

    bool openContainer(Head head) {
        const auto count = countOf(head);
        const bool isDictionary = head.marker == kDictionary;
        const std::uint64_t perChild = m_referenceSize * (isDictionary ? 2U : 1U);
        if (!count || *count > m_table || !bytesAt(head.content, *count * perChild)) {
            return false;
        }
        const auto size = static_cast<std::size_t>(*count);
        if (isDictionary) {
            return openDictionary(head.content, size);
        }
        m_open.push_back({head.content, size, 0, false});
        return head.marker == kArray ? m_builder.openArray(size) : m_builder.openOpaque(size);
    }

    // One with a key that is no text, as archives and settings hold them, is nothing that could be asked for a
    // key. It is read like a set of its keys and values, so that damage in it is still found.
    bool openDictionary(std::size_t references, std::size_t count) {
        bool hasTextKeys = true;
        for (std::size_t i = 0; i < count; ++i) {
            const auto key = headOf(referenceAt(references, i));
            if (!key || !isLeaf(key->marker)) {
                return false;
            }
            hasTextKeys = hasTextKeys && isText(key->marker);
        }
        if (hasTextKeys) {
            m_open.push_back({references, count, 0, true});
            return m_builder.openDictionary(count);
        }
        m_open.push_back({references, count * 2, 0, false});
        return m_builder.openOpaque(count * 2);
    }

    static bool isText(unsigned marker) { return marker == kAsciiString || marker == kUtf16String; }

    // What may be a key: a value of its own without children.
    static bool isLeaf(unsigned marker) { return marker <= kUtf16String; }

    std::string_view m_bytes;
    Builder m_builder;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::uint64_t m_objectCount = 0;
    std::uint64_t m_topObject = 0;
    std::size_t m_table = 0; // where the objects end and the table of their offsets begins
    std::vector<Open> m_open;
};

} // namespace

std::optional<Value> readBinary(std::string_view bytes, const Limits& limits) {
    return Reader(bytes, limits).read();
}

} // namespace quillane::PropertyList::Detail
