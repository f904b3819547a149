#pragma once
#include "Date.h"
#include "Result.h"
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

// Reads property lists in the platform's three forms (XML, binary, and the old text form) and casts their
// values as the platform does. Input is hostile until parsed: whatever the bytes, the answer comes in time
// and memory proportional to the limits below, nothing from a document is expanded or fetched, and nothing
// recurses with the input. Any thread.
namespace quillane::PropertyList {

struct Limits {
    // The largest document. Lists of applications and launchd hold a few KB, the largest known some 100 KB;
    // our own defaults may hold the record of a cleanup of many thousand paths.
    std::size_t bytes = std::size_t{16} << 20U;
    // The most values a list may hold once it is written out in full. A binary list names objects by number,
    // so a few hundred bytes can stand for more values than memory holds.
    std::size_t nodes = 200'000;
    // The most bytes of texts, keys and data once written out in full, for the same reason.
    std::size_t payload = std::size_t{64} << 20U;
    // The deepest nesting of containers. Real lists stay below 20. Destroying a value recurses this deep, so
    // it must suit the smallest stack there is, the 512 KB of a worker thread on the Mac.
    std::size_t depth = 256;
    friend bool operator==(const Limits&, const Limits&) = default;
};

class Value;
struct Entry;

// A whole number above the signed 64-bit range.
struct BigNumber {
    std::uint64_t value = 0;
    friend bool operator==(const BigNumber&, const BigNumber&) = default;
};

struct Data {
    std::string bytes;
    friend bool operator==(const Data&, const Data&) = default;
};

// What a binary list may hold and no cast accepts: null, sets, the references of archives, and dictionaries
// with a key that is no text.
struct Opaque {
    friend bool operator==(const Opaque&, const Opaque&) = default;
};

using Array = std::vector<Value>;

// Values by key, sorted by the bytes of the keys. Each key occurs once.
class Dictionary {
  public:
    Dictionary();
    ~Dictionary();
    Dictionary(const Dictionary&);
    Dictionary(Dictionary&&) noexcept;
    Dictionary& operator=(const Dictionary&);
    Dictionary& operator=(Dictionary&&) noexcept;
    // Of entries with the same key the last one stays.
    explicit Dictionary(std::vector<Entry> entries);

    // The value of a key, or null. Logarithmic. Lives as long as the dictionary.
    const Value* find(std::string_view key) const;
    const std::vector<Entry>& entries() const { return m_entries; }

    friend bool operator==(const Dictionary& a, const Dictionary& b);

  private:
    std::vector<Entry> m_entries;
};

// One value of a list. Texts and keys are valid UTF-8 and may hold U+0000, so check before using one as a
// path.
class Value {
  public:
    using Variant = std::variant<bool, std::int64_t, BigNumber, double, std::string, Date, Data, Array,
                                 Dictionary, Opaque>;

    explicit Value(Variant variant)
        : m_variant(std::move(variant)) {}
    const Variant& variant() const { return m_variant; }

    friend bool operator==(const Value& a, const Value& b);

  private:
    Variant m_variant;
};

struct Entry {
    std::string key;
    Value value;
    friend bool operator==(const Entry&, const Entry&) = default;
};

// The list that the bytes hold, told from its content alone, whatever the file's name. The root may be of any
// kind. Blanks alone are an empty dictionary; no bytes at all, JSON, a list that is damaged anywhere and one
// beyond the limits fail with ErrorCode::kUnreadable.
Result<Value> parse(std::string_view bytes, Limits limits = {});

// The casts of the platform. Each takes what Dictionary::find() gives, and nothing casts from a null pointer.
// Numbers cast when the wanted type represents them exactly, and truth values count as the numbers 1 and 0:
// the integer 1 and the real 1.0 are true, 2 is no truth value, true is the integer 1, and the real 60.0 is
// the integer 60. Texts never cast to numbers nor numbers to texts.
std::optional<bool> asBool(const Value* value);
std::optional<std::int64_t> asInt(const Value* value);
std::optional<double> asDouble(const Value* value);
std::optional<std::string> asString(const Value* value);
// Nothing as soon as one element is no text; an empty array is an empty array of anything.
std::optional<std::vector<std::string>> asStringArray(const Value* value);
std::optional<Date> asDate(const Value* value);
// These point into the value and are null for another kind.
const Data* asData(const Value* value);
const Array* asArray(const Value* value);
const Dictionary* asDictionary(const Value* value);

} // namespace quillane::PropertyList
