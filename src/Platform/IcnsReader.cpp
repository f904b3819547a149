#include "IcnsReader.h"
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

namespace quillane::IcnsReader {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kEntryHeader = 8; // four letters and the length, which counts these 8 bytes
constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n"sv;
constexpr std::string_view kJpeg2000Signature = "\0\0\0\x0CjP  \r\n\x87\n"sv;
constexpr std::string_view kJpeg2000Codestream = "\xFF\x4F\xFF\x51"sv;
constexpr std::string_view kArgbSignature = "ARGB"sv;

enum class Encoding { png, pixels, jpeg2000 };

// What an entry of a type may hold, by its letters.
struct EntryType {
    std::string_view letters;
    int side;
    std::string_view mask; // the entry with its transparency; only entries of the oldest kind have one
};

// The letters do not tell the encoding: those of the newer kinds hold PNG, JPEG 2000 or compressed pixels.
constexpr std::array<EntryType, 21> kTypes = {
    {{"is32", 16, "s8mk"}, {"il32", 32, "l8mk"}, {"ih32", 48, "h8mk"}, {"it32", 128, "t8mk"},
     {"icp4", 16, {}},     {"icp5", 32, {}},     {"icp6", 64, {}},     {"ic04", 16, {}},
     {"ic05", 32, {}},     {"icsb", 18, {}},     {"icsB", 36, {}},     {"sb24", 24, {}},
     {"SB24", 48, {}},     {"ic07", 128, {}},    {"ic08", 256, {}},    {"ic09", 512, {}},
     {"ic10", 1024, {}},   {"ic11", 32, {}},     {"ic12", 64, {}},     {"ic13", 256, {}},
     {"ic14", 512, {}}}};

struct Candidate {
    const EntryType* type;
    std::string_view content;
    Encoding encoding;
    int side;
};

using Entries = std::map<std::string_view, std::string_view>;

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(0, 4)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number;
}

// The contents by type, the first of each. A container that was cut off gives what is whole.
Entries entriesOf(std::string_view bytes) {
    Entries entries;
    if (bytes.size() < kEntryHeader || !bytes.starts_with("icns")) {
        return entries;
    }
    auto rest = bytes.substr(0, bigEndian(bytes.substr(4)));
    rest.remove_prefix(std::min(kEntryHeader, rest.size()));
    while (rest.size() >= kEntryHeader) {
        const std::size_t length = bigEndian(rest.substr(4));
        if (length < kEntryHeader || length > rest.size()) {
            break;
        }
        entries.try_emplace(rest.substr(0, 4), rest.substr(kEntryHeader, length - kEntryHeader));
        rest.remove_prefix(length);
    }
    return entries;
}

// The side that the header of a PNG tells; nothing when it is not square or not of a size for an icon.
std::optional<int> pngSide(std::string_view png) {
    constexpr std::size_t kWidthAt = 16; // behind the signature, and the length and name of the first chunk
    constexpr std::size_t kHeaderEnd = 24;
    if (png.size() < kHeaderEnd || png.substr(12, 4) != "IHDR") {
        return std::nullopt;
    }
    const auto width = bigEndian(png.substr(kWidthAt));
    const auto height = bigEndian(png.substr(kWidthAt + 4));
    if (width == 0 || width != height || width > static_cast<std::uint32_t>(kMostSide)) {
        return std::nullopt;
    }
    return static_cast<int>(width);
}

std::optional<Candidate> candidate(const EntryType& type, std::string_view content) {
    if (content.starts_with(kPngSignature)) {
        const auto side = pngSide(content);
        return side ? std::optional(Candidate{&type, content, Encoding::png, *side}) : std::nullopt;
    }
    if (content.starts_with(kJpeg2000Signature) || content.starts_with(kJpeg2000Codestream)) {
        return Candidate{&type, content, Encoding::jpeg2000, type.side};
    }
    return Candidate{&type, content, Encoding::pixels, type.side};
}

// All that the container offers, the best first.
std::vector<Candidate> ranked(const Entries& entries, int side) {
    std::vector<Candidate> candidates;
    for (const auto& type : kTypes) {
        const auto entry = entries.find(type.letters);
        if (entry == entries.end()) {
            continue;
        }
        if (const auto found = candidate(type, entry->second)) {
            candidates.push_back(*found);
        }
    }
    std::ranges::sort(candidates, {}, [side](const Candidate& one) {
        const bool isTooSmall = one.side < side;
        return std::tuple(one.encoding == Encoding::jpeg2000, isTooSmall, isTooSmall ? -one.side : one.side,
                          one.encoding);
    });
    return candidates;
}

// Expands runs into exactly `size` bytes: a byte below 128 says how many bytes less one stand as they are, any
// other repeats the byte behind it 3 to 130 times. Nothing when the input ends early or runs over.
std::optional<std::vector<std::uint8_t>> expand(std::string_view input, std::size_t size) {
    std::vector<std::uint8_t> output;
    output.reserve(size);
    while (output.size() < size) {
        if (input.size() < 2) {
            return std::nullopt;
        }
        const std::size_t control = static_cast<unsigned char>(input.front());
        input.remove_prefix(1);
        const bool isRun = control >= 128;
        const std::size_t count = isRun ? control - 125 : control + 1;
        const std::size_t used = isRun ? 1 : count;
        if (count > size - output.size() || used > input.size()) {
            return std::nullopt;
        }
        if (isRun) {
            output.insert(output.end(), count, static_cast<std::uint8_t>(input.front()));
        } else {
            std::ranges::transform(input.substr(0, count), std::back_inserter(output),
                                   [](char byte) { return static_cast<std::uint8_t>(byte); });
        }
        input.remove_prefix(used);
    }
    return output;
}

// Where the planes of an expanded picture begin. Each plane holds one byte for each pixel.
struct Planes {
    const std::uint8_t* alpha; // null where all is opaque
    const std::uint8_t* red;
    const std::uint8_t* green;
    const std::uint8_t* blue;
};

IconImage interleaved(const Planes& planes, int side, std::size_t pixels) {
    constexpr std::uint8_t kOpaque = 255;
    IconImage image{side, side, {}};
    image.rgba.reserve(pixels * 4);
    for (std::size_t i = 0; i < pixels; ++i) {
        image.rgba.push_back(planes.red[i]);
        image.rgba.push_back(planes.green[i]);
        image.rgba.push_back(planes.blue[i]);
        image.rgba.push_back(planes.alpha != nullptr ? planes.alpha[i] : kOpaque);
    }
    return image;
}

std::size_t pixelsOf(const EntryType& type) {
    return static_cast<std::size_t>(type.side) * static_cast<std::size_t>(type.side);
}

std::optional<IconImage> decodeArgb(const EntryType& type, std::string_view content) {
    const auto count = pixelsOf(type);
    const auto bytes = expand(content.substr(kArgbSignature.size()), count * 4);
    if (!bytes) {
        return std::nullopt;
    }
    const auto* first = bytes->data();
    return interleaved({first, first + count, first + 2 * count, first + 3 * count}, type.side, count);
}

// Without its mask, or with one of a wrong size, a picture is opaque.
const std::uint8_t* maskOf(const EntryType& type, const Entries& entries) {
    const auto mask = entries.find(type.mask);
    if (mask == entries.end() || mask->second.size() != pixelsOf(type)) {
        return nullptr;
    }
    return reinterpret_cast<const std::uint8_t*>(mask->second.data());
}

std::optional<IconImage> decodeRgb(const EntryType& type, std::string_view content, const Entries& entries) {
    if (type.letters == "it32" && content.starts_with("\0\0\0\0"sv)) {
        content.remove_prefix(4); // stands in front of this one type and means nothing
    }
    const auto count = pixelsOf(type);
    const auto bytes = expand(content, count * 3);
    if (!bytes) {
        return std::nullopt;
    }
    const auto* first = bytes->data();
    return interleaved({maskOf(type, entries), first, first + count, first + 2 * count}, type.side, count);
}

std::optional<Picture> picture(const Candidate& from, const Entries& entries) {
    if (from.encoding != Encoding::pixels) {
        const auto form = from.encoding == Encoding::png ? Picture::Form::png : Picture::Form::jpeg2000;
        return Picture{form, from.side, from.content, {}};
    }
    auto image = from.content.starts_with(kArgbSignature) ? decodeArgb(*from.type, from.content)
                                                          : decodeRgb(*from.type, from.content, entries);
    if (!image) {
        return std::nullopt;
    }
    return Picture{Picture::Form::pixels, from.side, {}, *std::move(image)};
}

} // namespace

std::optional<Picture> best(std::string_view bytes, int side) {
    const auto entries = entriesOf(bytes);
    for (const auto& one : ranked(entries, side)) {
        if (auto found = picture(one, entries)) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace quillane::IcnsReader
