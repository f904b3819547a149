#include "ShortestDecimal.h"
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace quillane {
namespace {

constexpr std::string_view kZero = "0";

int exponentAfter(std::string_view text, std::size_t mark) {
    if (mark == std::string_view::npos) {
        return 0;
    }
    const auto digits = text.substr(text.at(mark + 1) == '+' ? mark + 2 : mark + 1);
    int exponent = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    return exponent;
}

std::string zeros(std::size_t count) {
    return std::string(count, '0');
}

} // namespace

// The formatting library decides where a text has its point and whether it has an exponent; only the digits and what
// they are worth is taken from it.
ShortestDecimal::ShortestDecimal(double value)
    : m_isNegative(std::signbit(value)) {
    const std::string text = fmt::format("{}", std::fabs(value));
    const auto mark = text.find('e');
    const auto mantissa = std::string_view(text).substr(0, mark);
    const auto point = std::min(mantissa.find('.'), mantissa.size());
    m_digits = mantissa.substr(0, point);
    if (point < mantissa.size()) {
        m_digits += mantissa.substr(point + 1);
    }
    const auto first = m_digits.find_first_not_of('0');
    if (first == std::string::npos) {
        m_digits = kZero;
        m_exponent = 0;
        return;
    }
    m_exponent = static_cast<int>(point) - 1 - static_cast<int>(first) + exponentAfter(text, mark);
    m_digits.erase(0, first);
    m_digits.erase(m_digits.find_last_not_of('0') + 1);
}

std::string ShortestDecimal::fixed() const {
    const std::string sign = m_isNegative ? "-" : "";
    if (m_exponent < 0) {
        return sign + "0." + zeros(static_cast<std::size_t>(-m_exponent - 1)) + m_digits;
    }
    const auto whole = static_cast<std::size_t>(m_exponent) + 1;
    if (whole >= m_digits.size()) {
        return sign + m_digits + zeros(whole - m_digits.size());
    }
    return sign + m_digits.substr(0, whole) + "." + m_digits.substr(whole);
}

std::string ShortestDecimal::scientific() const {
    const std::string fraction = m_digits.size() > 1 ? "." + m_digits.substr(1) : "";
    return fmt::format("{}{}{}e{}{:02}", m_isNegative ? "-" : "", m_digits.front(), fraction,
                       m_exponent < 0 ? '-' : '+', std::abs(m_exponent));
}

std::string ShortestDecimal::shorter() const {
    auto plain = fixed();
    auto withExponent = scientific();
    return withExponent.size() < plain.size() ? std::move(withExponent) : std::move(plain);
}

} // namespace quillane
