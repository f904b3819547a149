#pragma once
#include "PropertyList.h"
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the readers of the three forms share. Only they include this.
namespace quillane::PropertyList::Detail {

// Puts values together as a reader meets them, one at a time, and holds the limits. Every operation answers
// false when the list can't go on: a limit is passed, or a value stands where none may. The reader then gives
// up and drops the builder.
class Builder {
  public:
    explicit Builder(const Limits& limits)
        : m_limits(limits) {}

    // Names the next value of the innermost dictionary; fails when one is named already, and in an array.
    bool key(std::string key);
    // A value without children, in the innermost container or as the root.
    bool add(Value::Variant leaf);
    // The same for values with bytes of their own, which count.
    bool addString(std::string text);
    bool addData(std::string bytes);

    // Begins a container of `expected` values (0 when unknown), which count at once.
    bool openArray(std::size_t expected = 0) { return open(Kind::array, expected); }
    bool openDictionary(std::size_t expected = 0) { return open(Kind::dictionary, expected); }
    // An array whose values are read and then dropped: it becomes Opaque.
    bool openOpaque(std::size_t expected = 0) { return open(Kind::opaque, expected); }
    // Ends the innermost container; fails when a key waits for its value.
    bool close();

    // How many containers are open.
    std::size_t depth() const { return m_frames.size(); }
    // The innermost container is a dictionary.
    bool inDictionary() const { return depth() > 0 && m_frames.back().kind == Kind::dictionary; }
    // The finished root; nothing when there is none or a container is still open.
    std::optional<Value> take();

  private:
    enum class Kind { array, dictionary, opaque };
    struct Frame {
        Kind kind;
        Array values;
        std::vector<Entry> entries;
        std::optional<std::string> key;
        std::size_t counted; // values still to come that count already
    };

    bool open(Kind kind, std::size_t expected);
    bool countNodes(std::size_t count);
    bool countPayload(std::size_t bytes);
    bool place(Value value);

    Limits m_limits;
    std::size_t m_nodes = 0;
    std::size_t m_payload = 0;
    std::vector<Frame> m_frames;
    std::optional<Value> m_root;
};

// The readers. Text is valid UTF-8 without a byte order mark. Each answers nothing for what it can't read.
std::optional<Value> readXml(std::string_view text, const Limits& limits);
std::optional<Value> readBinary(std::string_view bytes, const Limits& limits);
std::optional<Value> readText(std::string_view text, const Limits& limits);

// The six blanks of ASCII.
constexpr bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// 0 to 15, or nothing.
constexpr std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<unsigned>(c - 'a') + 10U;
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<unsigned>(c - 'A') + 10U;
    }
    return std::nullopt;
}

} // namespace quillane::PropertyList::Detail
