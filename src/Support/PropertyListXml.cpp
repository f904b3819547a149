// The XML form. pugixml makes the tree; this walks it without recursion and decodes the texts, because the
// platform rejects what a tolerant XML reader lets pass.
#include "Base64.h"
#include "PropertyListBuilder.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <locale.h>
#include <pugixml.hpp>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace quillane::PropertyList::Detail {

namespace {

// Comments, instructions and the document type are passed over and nothing in them is looked at. Entities
// stay as they stand (decode() knows the five of XML and no others). Blanks are text here, and line ends are
// left alone, as on the platform. Text at the top is kept so that it can be refused.
constexpr unsigned kParseOptions =
    pugi::parse_cdata | pugi::parse_ws_pcdata | pugi::parse_embed_pcdata | pugi::parse_fragment;

enum class Tag { array, data, date, dict, integer, key, plist, real, string, truth, falsehood, unknown };

Tag tagOf(std::string_view name) {
    struct Name {
        std::string_view text;
        Tag tag;
    };
    // The most frequent first.
    static constexpr std::array<Name, 11> kNames = {{{"key", Tag::key},
                                                     {"string", Tag::string},
                                                     {"true", Tag::truth},
                                                     {"false", Tag::falsehood},
                                                     {"dict", Tag::dict},
                                                     {"array", Tag::array},
                                                     {"integer", Tag::integer},
                                                     {"real", Tag::real},
                                                     {"data", Tag::data},
                                                     {"date", Tag::date},
                                                     {"plist", Tag::plist}}};
    const auto* found = std::ranges::find(kNames, name, &Name::text);
    return found != kNames.end() ? found->tag : Tag::unknown;
}

Tag tagOf(const pugi::xml_node& node) {
    return tagOf(std::string_view(node.name()));
}

bool isContainer(Tag tag) {
    return tag == Tag::dict || tag == Tag::array;
}

bool isBlankText(std::string_view text) {
    return std::ranges::all_of(text, isBlank);
}

// Blank text between elements, which means nothing. A marked section is never that.
bool isBlankNode(const pugi::xml_node& node) {
    return node.type() == pugi::node_pcdata && isBlankText(node.value());
}

pugi::xml_node skipBlanks(pugi::xml_node node) {
    while (node && isBlankNode(node)) {
        node = node.next_sibling();
    }
    return node;
}

// "#10", "#x1F600": the digits of a reference without "&" and ";".
std::optional<std::uint32_t> numericReference(std::string_view digits) {
    digits.remove_prefix(1);
    const bool isHex = digits.starts_with('x');
    if (isHex) {
        digits.remove_prefix(1);
    }
    const unsigned base = isHex ? 16 : 10;
    if (digits.empty()) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    for (const char c : digits) {
        const auto digit = hexDigit(c);
        if (!digit || *digit >= base) {
            return std::nullopt;
        }
        number = number * base + *digit;
        if (number > 0x10FFFF) {
            return std::nullopt;
        }
    }
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    return number == 0 || isSurrogate ? std::nullopt : std::optional(number);
}

std::optional<std::uint32_t> reference(std::string_view name) {
    struct Named {
        std::string_view name;
        char character;
    };
    static constexpr std::array<Named, 5> kNamed = {
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    if (name.starts_with('#')) {
        return numericReference(name);
    }
    const auto* found = std::ranges::find(kNamed, name, &Named::name);
    return found != kNamed.end() ? std::optional<std::uint32_t>(found->character) : std::nullopt;
}

// Appends `raw` with its references resolved; false for one that is unknown or has no end.
bool decode(std::string& text, std::string_view raw) {
    while (true) {
        const auto ampersand = raw.find('&');
        text += raw.substr(0, ampersand);
        if (ampersand == std::string_view::npos) {
            return true;
        }
        raw.remove_prefix(ampersand + 1);
        const auto end = raw.find(';');
        if (end == std::string_view::npos) {
            return false;
        }
        const auto character = reference(raw.substr(0, end));
        if (!character) {
            return false;
        }
        Utf8::append(text, *character);
        raw.remove_prefix(end + 1);
    }
}

// The text of an element that may hold nothing but text.
std::optional<std::string> textOf(const pugi::xml_node& node) {
    std::string text;
    if (!decode(text, node.value())) {
        return std::nullopt;
    }
    for (const auto& child : node.children()) {
        if (child.type() == pugi::node_cdata) {
            text += child.value();
        } else if (child.type() != pugi::node_pcdata || !decode(text, child.value())) {
            return std::nullopt;
        }
    }
    return text;
}

void dropLeadingBlanks(std::string_view& text) {
    text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, isBlank) - text.begin()));
}

std::optional<std::uint64_t> magnitude(std::string_view digits, unsigned base) {
    constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
    if (digits.empty()) {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const char c : digits) {
        const auto digit = hexDigit(c);
        if (!digit || *digit >= base || number > (kMost - *digit) / base) {
            return std::nullopt;
        }
        number = number * base + *digit;
    }
    return number;
}

// Blanks may stand before the sign and before the digits, and nothing may stand behind them.
std::optional<Value::Variant> parseInteger(std::string_view text) {
    dropLeadingBlanks(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
        dropLeadingBlanks(text);
    }
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const auto number = isHex ? magnitude(text.substr(2), 16) : magnitude(text, 10);
    if (!number) {
        return std::nullopt;
    }
    constexpr auto kMostInt = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (isNegative) {
        if (*number > kMostInt + 1) {
            return std::nullopt;
        }
        // The negation is of unsigned numbers, where the smallest Int has its place.
        return static_cast<std::int64_t>(std::uint64_t{0} - *number);
    }
    if (*number > kMostInt) {
        return BigNumber{*number};
    }
    return static_cast<std::int64_t>(*number);
}

// Numbers are written with a dot, whatever the user's locale.
locale_t plainLocale() {
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

bool equalsIgnoringCase(std::string_view a, std::string_view lower) {
    return std::ranges::equal(a, lower, {}, lowerAscii);
}

std::optional<double> specialReal(std::string_view text) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (equalsIgnoringCase(text, "nan")) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    if (equalsIgnoringCase(text, "inf") || equalsIgnoringCase(text, "infinity")) {
        return isNegative ? -kInfinity : kInfinity;
    }
    return std::nullopt;
}

std::optional<double> parseReal(const std::string& text) {
    if (const auto special = specialReal(text)) {
        return special;
    }
    // Nothing but decimal numbers: the C function would also take hexadecimal ones.
    const auto isAllowed = [](char c) {
        return isBlank(c) || (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' ||
               c == 'E';
    };
    if (text.empty() || !std::ranges::all_of(text, isAllowed)) {
        return std::nullopt;
    }
    char* end = nullptr;
    const double number = ::strtod_l(text.c_str(), &end, plainLocale());
    const bool isWhole = end == text.c_str() + text.size() && end != text.c_str() && !isBlank(text.back());
    return isWhole ? std::optional(number) : std::nullopt;
}

// Days from 2001-01-01 to a day of the proleptic Gregorian calendar. Years begin in March here, so that the
// leap day is the last of its year.
std::int64_t daysSinceReference(std::int64_t year, int month, int day) {
    constexpr std::int64_t kDaysOf400Years = 146097;
    constexpr std::int64_t kReferenceDay = 730791; // 2001-01-01, counted from 0000-03-01
    if (month <= 2) {
        --year;
    }
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysOf400Years + dayOfEra - kReferenceDay;
}

int daysOfMonth(std::int64_t year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && isLeap ? 29 : kDays.at(static_cast<std::size_t>(month - 1));
}

// Takes a number of at least one and at most `most` digits from the front.
std::optional<std::int64_t> takeDigits(std::string_view& text, std::size_t most) {
    std::int64_t number = 0;
    std::size_t count = 0;
    while (count < text.size() && count < most && text[count] >= '0' && text[count] <= '9') {
        number = number * 10 + (text[count] - '0');
        ++count;
    }
    text.remove_prefix(count);
    return count > 0 ? std::optional(number) : std::nullopt;
}

// Takes "<separator><two digits>" from the front; -1 when it does not stand there.
int takePart(std::string_view& text, char separator) {
    if (!text.starts_with(separator)) {
        return -1;
    }
    text.remove_prefix(1);
    const auto before = text.size();
    const auto number = takeDigits(text, 2);
    return number && before - text.size() == 2 ? static_cast<int>(*number) : -1;
}

// "2001-01-01T00:00:00Z", the one way to write a date; the year may be longer and negative.
std::optional<Date> parseDate(std::string_view text) {
    constexpr std::size_t kMostYearDigits = 9; // keeps the count of days far from overflow
    const bool isNegative = text.starts_with('-');
    if (isNegative) {
        text.remove_prefix(1);
    }
    const auto years = takeDigits(text, kMostYearDigits);
    const int month = takePart(text, '-');
    const int day = takePart(text, '-');
    const int hour = takePart(text, 'T');
    const int minute = takePart(text, ':');
    const int second = takePart(text, ':');
    if (!years || month < 1 || month > 12 || day < 1 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
        second < 0 || second > 59 || text != "Z") {
        return std::nullopt;
    }
    const std::int64_t year = isNegative ? -*years : *years;
    if (day > daysOfMonth(year, month)) {
        return std::nullopt;
    }
    const auto days = daysSinceReference(year, month, day);
    return Date{
        static_cast<double>(days * 86400 + std::int64_t{hour} * 3600 + std::int64_t{minute} * 60 + second)};
}

class Reader {
  public:
    explicit Reader(const Limits& limits)
        : m_builder(limits) {}

    // The list below `root`, which is an element.
    std::optional<Value> read(const pugi::xml_node& root) {
        auto node = root;
        while (enter(node)) {
            if (const auto child = firstValue(node)) {
                node = child;
                continue;
            }
            // Nothing below is left: out of every container that ends here, and on to what stands behind.
            while (true) {
                if (isContainer(tagOf(node)) && !m_builder.close()) {
                    return std::nullopt;
                }
                if (node == root) {
                    return m_builder.take();
                }
                if (const auto next = skipBlanks(node.next_sibling())) {
                    node = next;
                    break;
                }
                node = node.parent();
            }
        }
        return std::nullopt;
    }

  private:
    static pugi::xml_node firstValue(const pugi::xml_node& node) {
        return isContainer(tagOf(node)) ? skipBlanks(node.first_child()) : pugi::xml_node();
    }

    // Begins a container or adds a leaf.
    bool enter(const pugi::xml_node& node) {
        if (node.type() != pugi::node_element) {
            return false;
        }
        switch (tagOf(node)) {
        case Tag::dict:
            return isBlankText(node.value()) && m_builder.openDictionary();
        case Tag::array:
            return isBlankText(node.value()) && m_builder.openArray();
        case Tag::truth:
            return isBare(node) && m_builder.add(true);
        case Tag::falsehood:
            return isBare(node) && m_builder.add(false);
        case Tag::plist:
        case Tag::unknown:
            return false;
        default:
            return addText(node);
        }
    }

    static bool isBare(const pugi::xml_node& node) {
        return isBlankText(node.value()) && !skipBlanks(node.first_child());
    }

    // A leaf whose value stands in its text.
    bool addText(const pugi::xml_node& node) {
        auto text = textOf(node);
        if (!text) {
            return false;
        }
        switch (tagOf(node)) {
        case Tag::key:
            return m_builder.key(*std::move(text));
        case Tag::string:
            return m_builder.addString(*std::move(text));
        case Tag::data:
            return m_builder.addData(Base64::decoded(*text));
        case Tag::integer:
            return addIfPresent(parseInteger(*text));
        case Tag::real:
            return addIfPresent(parseReal(*text));
        case Tag::date:
            return addIfPresent(parseDate(*text));
        default:
            return false;
        }
    }

    template <class T>
    bool addIfPresent(std::optional<T> value) {
        return value && m_builder.add(*std::move(value));
    }

    Builder m_builder;
};

// The tree costs up to 128 bytes for each tag with the blanks before it, and less for each attribute. Every
// one of them needs one of these characters, of which texts hold few.
bool fitsInATree(std::string_view text, const Limits& limits) {
    const auto marks = std::ranges::count_if(text, [](char c) { return c == '<' || c == '='; });
    return static_cast<std::size_t>(marks) / 4 <= limits.nodes;
}

// The element that holds the list: the one below <plist>, or the root itself.
pugi::xml_node listElement(const pugi::xml_document& document) {
    const auto root = skipBlanks(document.first_child());
    if (tagOf(root) != Tag::plist) {
        return root;
    }
    const auto list = skipBlanks(root.first_child());
    const bool isOnly = isBlankText(root.value()) && !skipBlanks(list.next_sibling());
    return isOnly ? list : pugi::xml_node();
}

bool parseTree(pugi::xml_document& document, std::string_view text) {
    return static_cast<bool>(
        document.load_buffer(text.data(), text.size(), kParseOptions, pugi::encoding_utf8));
}

// Whatever follows the end of the list is nobody's business, but it may be no XML. Then only what comes
// before is read.
bool parseTreeUpToEnd(pugi::xml_document& document, std::string_view text) {
    const auto closing = text.find("</plist");
    const auto end = closing == std::string_view::npos ? closing : text.find('>', closing);
    return end != std::string_view::npos && end + 1 < text.size() &&
           parseTree(document, text.substr(0, end + 1));
}

} // namespace

std::optional<Value> readXml(std::string_view text, const Limits& limits) {
    pugi::xml_document document;
    if (!fitsInATree(text, limits) || (!parseTree(document, text) && !parseTreeUpToEnd(document, text))) {
        return std::nullopt;
    }
    const auto list = listElement(document);
    return list ? Reader(limits).read(list) : std::nullopt;
}

} // namespace quillane::PropertyList::Detail
