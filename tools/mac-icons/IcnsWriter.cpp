#include "IcnsWriter.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace quillane::IcnsWriter {
namespace {

constexpr std::size_t kEntryHeader = 8; // four letters and the length, which counts these 8 bytes

struct Type {
    Size size;
    std::string_view letters;
    std::string_view mask; // of what is kept as pixels
};

// ic11 to ic14 and ic10 are drawn at two pixels a point.
constexpr std::array<Type, 10> kTypes = {{{{16, 1}, "is32", "s8mk"},
                                          {{16, 2}, "ic11", {}},
                                          {{32, 1}, "il32", "l8mk"},
                                          {{32, 2}, "ic12", {}},
                                          {{128, 1}, "ic07", {}},
                                          {{128, 2}, "ic13", {}},
                                          {{256, 1}, "ic08", {}},
                                          {{256, 2}, "ic14", {}},
                                          {{512, 1}, "ic09", {}},
                                          {{512, 2}, "ic10", {}}}};

constexpr auto kSizes = [] {
    std::array<Size, kTypes.size()> sizes;
    std::ranges::transform(kTypes, sizes.begin(), &Type::size);
    return sizes;
}();

const Type& typeOf(Size size) {
    const auto* found = std::ranges::find_if(
        kTypes, [size](Size one) { return one.points == size.points && one.scale == size.scale; },
        &Type::size);
    if (found == kTypes.end()) {
        throw std::invalid_argument("no size of an icon");
    }
    return *found;
}

void appendNumber(std::string& bytes, std::size_t number) {
    for (const int shift : {24, 16, 8, 0}) {
        bytes += static_cast<char>(number >> static_cast<unsigned>(shift) & 0xFFU);
    }
}

std::string planeOf(const IconImage& image, std::size_t channel) {
    std::string plane;
    for (std::size_t at = channel; at < image.rgba.size(); at += 4) {
        plane += static_cast<char>(image.rgba[at]);
    }
    return plane;
}

// How often the first byte repeats, as far as one run can tell.
std::size_t runAtStart(std::string_view bytes) {
    constexpr std::size_t kLongestRun = 130;
    const auto end = std::min(bytes.find_first_not_of(bytes.front()), bytes.size());
    return std::min(end, kLongestRun);
}

// How many bytes stand as they are until a run is worth its two bytes.
std::size_t plainAtStart(std::string_view bytes) {
    constexpr std::size_t kLongestPlain = 128;
    std::size_t count = 0;
    while (count < std::min(bytes.size(), kLongestPlain) && runAtStart(bytes.substr(count)) < 3) {
        ++count;
    }
    return count;
}

// A byte below 128 says how many bytes less one follow as they are, any other repeats the byte behind it 3 to 130 times.
std::string packed(std::string_view plane) {
    std::string bytes;
    while (!plane.empty()) {
        const auto plain = plainAtStart(plane);
        const auto used = plain > 0 ? plain : runAtStart(plane);
        bytes += static_cast<char>(plain > 0 ? plain - 1 : used + 125);
        bytes += plane.substr(0, plain > 0 ? plain : 1);
        plane.remove_prefix(used);
    }
    return bytes;
}

} // namespace

std::span<const Size> sizes() {
    return kSizes;
}

bool Container::isKeptAsPixels(Size size) {
    return !typeOf(size).mask.empty();
}

void Container::addPixels(Size size, const IconImage& image) {
    const auto& type = typeOf(size);
    const auto side = static_cast<std::size_t>(size.side());
    if (!isKeptAsPixels(size) || image.rgba.size() != side * side * 4) {
        throw std::invalid_argument("not the pixels of this size");
    }
    add(type.letters, packed(planeOf(image, 0)) + packed(planeOf(image, 1)) + packed(planeOf(image, 2)));
    add(type.mask, planeOf(image, 3));
}

void Container::addPng(Size size, std::string_view png) {
    if (isKeptAsPixels(size)) {
        throw std::invalid_argument("this size is kept as pixels");
    }
    add(typeOf(size).letters, png);
}

void Container::add(std::string_view type, std::string_view content) {
    m_entries += type;
    appendNumber(m_entries, content.size() + kEntryHeader);
    m_entries += content;
}

std::string Container::bytes() const {
    std::string bytes = "icns";
    appendNumber(bytes, m_entries.size() + kEntryHeader);
    return bytes + m_entries;
}

} // namespace quillane::IcnsWriter
