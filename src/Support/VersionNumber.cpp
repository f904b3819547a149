#include "VersionNumber.h"
#include <algorithm>
#include <charconv>
#include <utility>

namespace quillane {
namespace {

std::optional<std::uint32_t> partOf(std::string_view text) {
    const bool isNumber = !text.empty() && text.size() <= VersionNumber::kMostDigits &&
                          std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; }) &&
                          (text.size() == 1 || text.front() != '0');
    if (!isNumber) {
        return std::nullopt;
    }
    std::uint32_t part = 0;
    std::from_chars(text.data(), text.data() + text.size(), part);
    return part;
}

} // namespace

std::optional<VersionNumber> VersionNumber::parse(std::string_view text) {
    std::vector<std::uint32_t> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find('.', begin), text.size());
        const auto part = partOf(text.substr(begin, end - begin));
        if (!part || parts.size() == kMostParts) {
            return std::nullopt;
        }
        parts.push_back(*part);
        begin = end + 1;
    }
    while (!parts.empty() && parts.back() == 0) {
        parts.pop_back();
    }
    return VersionNumber(text, std::move(parts));
}

std::strong_ordering operator<=>(const VersionNumber& a, const VersionNumber& b) {
    return std::lexicographical_compare_three_way(a.m_parts.begin(), a.m_parts.end(), b.m_parts.begin(),
                                                  b.m_parts.end());
}

} // namespace quillane
