#include "PropertyList.h"
#include "PropertyListBuilder.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace quillane::PropertyList {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

// The encoding that an XML declaration names, in lower case; empty without one.
std::string declaredEncoding(std::string_view text) {
    constexpr std::string_view kDeclaration = "<?xml";
    constexpr std::string_view kName = "encoding";
    if (!text.starts_with(kDeclaration)) {
        return {};
    }
    const auto declaration = text.substr(0, text.find("?>"));
    const auto name = declaration.find(kName);
    if (name == std::string_view::npos) {
        return {};
    }
    const auto open = declaration.find_first_of("\"'", name + kName.size());
    if (open == std::string_view::npos) {
        return {};
    }
    const auto close = declaration.find(declaration[open], open + 1);
    if (close == std::string_view::npos) {
        return {};
    }
    std::string encoding(declaration.substr(open + 1, close - open - 1));
    std::ranges::transform(encoding, encoding.begin(), Detail::lowerAscii);
    return encoding;
}

bool isLatin1Name(std::string_view encoding) {
    constexpr std::array<std::string_view, 4> kNames = {"iso-8859-1", "iso8859-1", "latin1", "iso-latin-1"};
    return std::ranges::find(kNames, encoding) != kNames.end();
}

// A document as UTF-8 without byte order mark. Most are that already and are not copied.
class Utf8Text {
  public:
    explicit Utf8Text(std::string_view bytes) {
        using Utf8::ByteOrder;
        using namespace std::string_view_literals;
        if (bytes.starts_with(kUtf8Mark)) {
            m_text = bytes.substr(kUtf8Mark.size());
        } else if (bytes.starts_with("\xFE\xFF")) {
            own(Utf8::fromUtf16(bytes.substr(2), ByteOrder::bigEndian));
        } else if (bytes.starts_with("\xFF\xFE")) {
            own(Utf8::fromUtf16(bytes.substr(2), ByteOrder::littleEndian));
        } else if (bytes.starts_with("\0<"sv)) {
            own(Utf8::fromUtf16(bytes, ByteOrder::bigEndian));
        } else if (bytes.starts_with("<\0"sv)) {
            own(Utf8::fromUtf16(bytes, ByteOrder::littleEndian));
        } else if (isLatin1Name(declaredEncoding(bytes))) {
            own(Utf8::fromLatin1(bytes));
        } else {
            m_text = bytes;
        }
    }
    Utf8Text(const Utf8Text&) = delete;
    Utf8Text& operator=(const Utf8Text&) = delete;

    std::string_view text() const { return m_text; }

  private:
    void own(std::string text) {
        m_owned = std::move(text);
        m_text = m_owned;
    }

    std::string m_owned;
    std::string_view m_text;
};

std::optional<Value> read(std::string_view bytes, const Limits& limits) {
    if (bytes.empty() || bytes.size() > limits.bytes) {
        return std::nullopt;
    }
    // Whatever its version, a binary list is never meant as text.
    if (bytes.starts_with("bplist0")) {
        return Detail::readBinary(bytes, limits);
    }
    const Utf8Text document(bytes);
    const auto text = document.text();
    if (!Utf8::isValid(text)) {
        return std::nullopt;
    }
    const auto first = std::ranges::find_if_not(text, Detail::isBlank);
    if (first != text.end() && *first == '<') {
        if (auto value = Detail::readXml(text, limits)) {
            return value;
        }
        // The old text form also begins so, with data as its root.
    }
    return Detail::readText(text, limits);
}

std::optional<double> exactDouble(std::int64_t number) {
    const auto real = static_cast<double>(number);
    // At 2^63 the way back would overflow, and no Int is that large.
    const bool exact = real < kTwoTo63 && static_cast<std::int64_t>(real) == number;
    return exact ? std::optional(real) : std::nullopt;
}

std::optional<double> exactDouble(BigNumber number) {
    const auto real = static_cast<double>(number.value);
    const bool exact = real < kTwoTo64 && static_cast<std::uint64_t>(real) == number.value;
    return exact ? std::optional(real) : std::nullopt;
}

std::optional<std::int64_t> exactInt(double real) {
    // Also false for what is no number.
    const bool inRange = real >= -kTwoTo63 && real < kTwoTo63;
    if (!inRange || std::trunc(real) != real) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(real);
}

template <class T>
const T* held(const Value* value) {
    return value == nullptr ? nullptr : std::get_if<T>(&value->variant());
}

} // namespace

// Here, where an entry is complete.
Dictionary::Dictionary() = default;
Dictionary::~Dictionary() = default;
Dictionary::Dictionary(const Dictionary&) = default;
Dictionary::Dictionary(Dictionary&&) noexcept = default;
Dictionary& Dictionary::operator=(const Dictionary&) = default;
Dictionary& Dictionary::operator=(Dictionary&&) noexcept = default;

Dictionary::Dictionary(std::vector<Entry> entries) {
    // Entries are large, so their places are sorted and each entry moves once.
    std::vector<std::size_t> order(entries.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, [&entries](std::size_t a, std::size_t b) {
        const int keys = entries[a].key.compare(entries[b].key);
        return keys != 0 ? keys < 0 : a < b;
    });
    m_entries.reserve(entries.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const bool isRepeated = i + 1 < order.size() && entries[order[i + 1]].key == entries[order[i]].key;
        if (!isRepeated) {
            m_entries.push_back(std::move(entries[order[i]]));
        }
    }
}

const Value* Dictionary::find(std::string_view key) const {
    const auto at = std::ranges::lower_bound(m_entries, key, {},
                                             [](const Entry& entry) { return std::string_view(entry.key); });
    return at != m_entries.end() && at->key == key ? &at->value : nullptr;
}

bool operator==(const Dictionary& a, const Dictionary& b) {
    return a.m_entries == b.m_entries;
}

bool operator==(const Value& a, const Value& b) {
    return a.m_variant == b.m_variant;
}

Result<Value> parse(std::string_view bytes, Limits limits) {
    if (auto value = read(bytes, limits)) {
        return *std::move(value);
    }
    return PlatformError{ErrorCode::kUnreadable, std::nullopt};
}

std::optional<bool> asBool(const Value* value) {
    const auto number = asInt(value);
    return number == 0 || number == 1 ? std::optional(number == 1) : std::nullopt;
}

std::optional<std::int64_t> asInt(const Value* value) {
    if (const auto* truth = held<bool>(value)) {
        return *truth ? 1 : 0;
    }
    if (const auto* number = held<std::int64_t>(value)) {
        return *number;
    }
    if (const auto* real = held<double>(value)) {
        return exactInt(*real);
    }
    return std::nullopt;
}

std::optional<double> asDouble(const Value* value) {
    if (const auto* real = held<double>(value)) {
        return *real;
    }
    if (const auto* big = held<BigNumber>(value)) {
        return exactDouble(*big);
    }
    const auto number = asInt(value);
    return number ? exactDouble(*number) : std::nullopt;
}

std::optional<std::string> asString(const Value* value) {
    const auto* text = held<std::string>(value);
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

std::optional<std::vector<std::string>> asStringArray(const Value* value) {
    const auto* array = asArray(value);
    if (array == nullptr) {
        return std::nullopt;
    }
    std::vector<std::string> texts;
    texts.reserve(array->size());
    for (const auto& element : *array) {
        const auto* text = held<std::string>(&element);
        if (text == nullptr) {
            return std::nullopt;
        }
        texts.push_back(*text);
    }
    return texts;
}

std::optional<Date> asDate(const Value* value) {
    const auto* date = held<Date>(value);
    return date != nullptr ? std::optional(*date) : std::nullopt;
}

const Data* asData(const Value* value) {
    return held<Data>(value);
}

const Array* asArray(const Value* value) {
    return held<Array>(value);
}

const Dictionary* asDictionary(const Value* value) {
    return held<Dictionary>(value);
}

} // namespace quillane::PropertyList
