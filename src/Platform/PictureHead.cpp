#include "PictureHead.h"
#include "Utf8.h"
#include <algorithm>
#include <array>
#include <cstdint>

namespace quillane::PictureHead {
namespace {

constexpr std::size_t kSvgLookedAt = 4096; // for its first element
constexpr std::size_t kPdfLookedAt = 1024; // for its mark, which mail and printers like to push back

struct Mark {
    std::string_view form;
    std::size_t offset;
    std::string_view bytes;
};

using namespace std::string_view_literals;

constexpr std::array kMarks = {
    Mark{"png", 0, "\x89PNG\r\n\x1A\n"sv},
    Mark{"jpeg", 0, "\xFF\xD8\xFF"sv},
    Mark{"gif", 0, "GIF87a"sv},
    Mark{"gif", 0, "GIF89a"sv},
    Mark{"bmp", 6, "\0\0\0\0"sv}, // and "BM" at the front
    Mark{"tiff", 0, "II*\0"sv},
    Mark{"tiff", 0, "MM\0*"sv},
    Mark{"webp", 8, "WEBP"sv}, // and "RIFF" at the front
    Mark{"ico", 0, "\0\0\1\0"sv},
    Mark{"avif", 4, "ftypavif"sv},
    Mark{"heif", 4, "ftyphei"sv},
    Mark{"heif", 4, "ftyphev"sv},
    Mark{"heif", 4, "ftypmif1"sv},
    Mark{"jxl", 0, "\0\0\0\x0CJXL "sv},
    Mark{"jxl", 0, "\xFF\x0A"sv},
};

bool hasFront(std::string_view form, std::string_view head) {
    return form == "bmp" ? head.starts_with("BM") : form != "webp" || head.starts_with("RIFF");
}

// One of the forms of "P1" to "P6".
bool isPlainPicture(std::string_view head) {
    return head.size() > 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '6' &&
           " \t\r\n#"sv.find(head[2]) != std::string_view::npos;
}

bool isSvg(std::string_view head) {
    constexpr auto kMark = "\xEF\xBB\xBF"sv;
    if (head.starts_with(kMark)) {
        head.remove_prefix(kMark.size());
    }
    const auto first = head.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && head[first] == '<' &&
           head.substr(0, kSvgLookedAt).find("<svg") != std::string_view::npos;
}

unsigned byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

unsigned pairAt(std::string_view bytes, std::size_t at) {
    return byteAt(bytes, at) << 8U | byteAt(bytes, at + 1);
}

// What a frame of a JPEG declares.
struct Frame {
    bool comesInScans = false;
    unsigned components = 0;
    Bytes coefficients = 0; // bytes of all of them
};

bool isFrame(unsigned marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// Baseline and extended frames have their rows one after the other where one scan has all components.
bool isSequential(unsigned marker) {
    return marker == 0xC0 || marker == 0xC1 || marker == 0xC9;
}

std::int64_t sharesOf(unsigned side, unsigned factor, unsigned most) {
    return (static_cast<std::int64_t>(side) * factor + most - 1) / most;
}

// `segment` begins behind the length.
std::optional<Frame> frameIn(std::string_view segment, unsigned marker) {
    constexpr std::size_t kFixed = 6;
    constexpr std::size_t kComponent = 3;
    if (segment.size() < kFixed) {
        return std::nullopt;
    }
    const unsigned height = pairAt(segment, 1);
    const unsigned width = pairAt(segment, 3);
    Frame frame{!isSequential(marker), byteAt(segment, 5), 0};
    if (segment.size() < kFixed + frame.components * kComponent || frame.components == 0) {
        return std::nullopt;
    }
    unsigned across = 1;
    unsigned down = 1;
    for (unsigned i = 0; i < frame.components; ++i) {
        const unsigned factors = byteAt(segment, kFixed + i * kComponent + 1);
        across = std::max(across, factors >> 4U);
        down = std::max(down, factors & 15U);
    }
    for (unsigned i = 0; i < frame.components; ++i) {
        const unsigned factors = byteAt(segment, kFixed + i * kComponent + 1);
        frame.coefficients +=
            2 * sharesOf(width, factors >> 4U, across) * sharesOf(height, factors & 15U, down);
    }
    return frame;
}

constexpr std::ptrdiff_t kMostSvgMarks = 5'000; // beginnings and ends of elements

// Such as restarts: nothing but the marker. Readers pass a zero by as one, too.
bool standsAlone(unsigned marker) {
    return marker == 0x00 || marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

bool holdsAny(std::string_view text, std::initializer_list<std::string_view> words) {
    return std::ranges::any_of(
        words, [text](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

// A declaration of another encoding would have the reader see other letters than we do.
bool declaresOtherEncoding(std::string_view document) {
    const auto declaration = document.substr(0, document.find("?>"));
    const auto named = declaration.find("encoding");
    if (!document.starts_with("<?xml") || named == std::string_view::npos) {
        return false;
    }
    const auto begin = declaration.find_first_of("\"'", named);
    if (begin == std::string_view::npos) {
        return true;
    }
    const auto value =
        declaration.substr(begin + 1, declaration.find(declaration[begin], begin + 1) - begin - 1);
    return value != "UTF-8" && value != "utf-8";
}

} // namespace

std::string_view formOf(std::string_view head) {
    const auto* const mark = std::ranges::find_if(kMarks, [head](const Mark& m) {
        return head.size() >= m.offset && head.substr(m.offset).starts_with(m.bytes) &&
               hasFront(m.form, head);
    });
    if (mark != kMarks.end()) {
        return mark->form;
    }
    if (isPlainPicture(head)) {
        return "ppm";
    }
    if (head.substr(0, kPdfLookedAt).find("%PDF-") != std::string_view::npos) {
        return "pdf";
    }
    return isSvg(head) ? "svg"sv : ""sv;
}

std::optional<Bytes> bytesKeptOfJpeg(std::string_view head) {
    constexpr unsigned kScan = 0xDA;
    std::optional<Frame> frame;
    std::size_t at = 2;
    while (at + 4 <= head.size()) {
        const unsigned marker = byteAt(head, at + 1);
        if (byteAt(head, at) != 0xFF || marker == 0xFF || standsAlone(marker)) {
            at += byteAt(head, at) == 0xFF && marker != 0xFF ? 2 : 1;
            continue;
        }
        const std::size_t length = pairAt(head, at + 2);
        const auto segment = head.substr(at + 4, std::max<std::size_t>(length, 2) - 2);
        if (marker == kScan && frame) {
            const bool isWhole = !segment.empty() && byteAt(segment, 0) == frame->components;
            return frame->comesInScans || !isWhole ? frame->coefficients : 0;
        }
        if (isFrame(marker) && !frame) {
            frame = frameIn(segment, marker);
        }
        at += 2 + std::max<std::size_t>(length, 2);
    }
    return frame ? std::optional(frame->coefficients) : std::nullopt;
}

// Drawing can't be interrupted, so it must be little; what is used again and again is no little.
bool isHarmlessSvg(std::string_view document) {
    constexpr auto kMark = "\xEF\xBB\xBF"sv;
    if (document.starts_with(kMark)) {
        document.remove_prefix(kMark.size());
    }
    return Utf8::isValid(document) && document.find('\0') == std::string_view::npos &&
           !declaresOtherEncoding(document) && std::ranges::count(document, '<') <= kMostSvgMarks &&
           !holdsAny(document, {"<use", ":use", "<image", ":image", "<feImage", ":feImage", "dasharray",
                                "<!ENTITY", "&#", "\\", "@import"});
}

} // namespace quillane::PictureHead
