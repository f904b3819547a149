#include "Defaults.h"
#include <cmath>
#include <limits>

namespace quillane {
namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

std::string_view withoutLeadingBlanks(std::string_view text) {
    const auto begin = text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos ? std::string_view() : text.substr(begin);
}

// The number that a text begins with; 0 when there is none. Stops at the ends of the range.
std::int64_t leadingInteger(std::string_view text) {
    text = withoutLeadingBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            break;
        }
        const int digit = c - '0';
        if (__builtin_mul_overflow(value, 10, &value) ||
            __builtin_sub_overflow(value, digit, &value)) { // downwards: the least value has no counterpart
            return negative ? std::numeric_limits<std::int64_t>::min()
                            : std::numeric_limits<std::int64_t>::max();
        }
    }
    if (negative) {
        return value;
    }
    return value == std::numeric_limits<std::int64_t>::min() ? std::numeric_limits<std::int64_t>::max()
                                                             : -value;
}

// After blanks, one sign and zeros: Y, T or a digit from 1 to 9.
bool leadingTruth(std::string_view text) {
    text = withoutLeadingBlanks(text);
    if (text.starts_with('-') || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const auto first = text.find_first_not_of('0');
    if (first == std::string_view::npos) {
        return false;
    }
    const char c = text[first];
    return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
}

std::int64_t truncated(double real) {
    constexpr double kLimit = 9223372036854775808.0; // 2 to the 63
    if (std::isnan(real)) {
        return 0;
    }
    if (real >= kLimit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (real < -kLimit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return static_cast<std::int64_t>(real);
}

template <class T>
std::optional<T> stored(const std::optional<Defaults::Value>& value) {
    const T* typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed != nullptr ? std::optional<T>(*typed) : std::nullopt;
}

} // namespace

bool Defaults::boolean(std::string_view key) const {
    const auto found = value(key);
    if (const auto flag = stored<bool>(found)) {
        return *flag;
    }
    if (const auto number = stored<std::int64_t>(found)) {
        return *number != 0;
    }
    if (const auto real = stored<double>(found)) {
        return *real != 0;
    }
    const auto text = stored<std::string>(found);
    return text && leadingTruth(*text);
}

std::int64_t Defaults::integer(std::string_view key) const {
    const auto found = value(key);
    if (const auto number = stored<std::int64_t>(found)) {
        return *number;
    }
    if (const auto real = stored<double>(found)) {
        return truncated(*real);
    }
    if (const auto flag = stored<bool>(found)) {
        return *flag ? 1 : 0;
    }
    const auto text = stored<std::string>(found);
    return text ? leadingInteger(*text) : 0;
}

std::optional<std::vector<std::string>> Defaults::stringArray(std::string_view key) const {
    return stored<std::vector<std::string>>(value(key));
}

std::optional<Defaults::Data> Defaults::data(std::string_view key) const {
    return stored<Data>(value(key));
}

std::optional<Date> Defaults::date(std::string_view key) const {
    return stored<Date>(value(key));
}

} // namespace quillane
