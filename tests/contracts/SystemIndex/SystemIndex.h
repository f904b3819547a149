#pragma once
#include <map>
#include <optional>
#include <string>
#include <variant>

// What the Mac's index and its cloud say of paths, in their stead, to the sources that ask them: by the very
// declarations that the Mac's build is checked with. References are counted, and one that is released too often ends
// the program.
namespace quillane::SystemIndex {

struct Seconds {
    double since2001 = 0;
};
struct Text {
    std::string value;
};

struct Item {
    // Of the attribute that says when it was last used: absent, a date, or what should not stand there.
    std::variant<std::monostate, Seconds, Text> lastUsed;
    std::optional<bool> isInTheCloud;
    std::optional<std::string> downloadingStatus; // "current" and others
};

// The items by their paths; others are unknown.
std::map<std::string, Item>& items();
// How many references nobody has released.
int held();

} // namespace quillane::SystemIndex
