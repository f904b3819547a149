#pragma once
#include <string>

// The pieces of a PNG, as far as somebody looks at them who wants no picture: checksums are not real.
namespace quillane::PngText {

inline const std::string kSignature = "\x89PNG\r\n\x1A\n";

inline std::string chunk(const std::string& type, const std::string& data) {
    const std::string length = {'\0', '\0', static_cast<char>(data.size() >> 8U),
                                static_cast<char>(data.size() & 0xFFU)};
    return length + type + data + "crc.";
}

inline std::string text(const std::string& keyword, const std::string& text) {
    return chunk("tEXt", keyword + std::string(1, '\0') + text);
}

// A file that tells one text of itself before its picture.
inline std::string png(const std::string& keyword, const std::string& written) {
    return kSignature + chunk("IHDR", "1234567890123") + text(keyword, written) + chunk("IDAT", "pixels");
}

} // namespace quillane::PngText
