#include "PngFile.h"
#include "BigEndian.h"
#include <zlib.h>

namespace quillane {
namespace {

const Bytef* bytesOf(std::string_view bytes) {
    return reinterpret_cast<const Bytef*>(bytes.data());
}

std::string deflated(std::string_view bytes, int level) {
    uLongf length = ::compressBound(static_cast<uLong>(bytes.size()));
    std::string stream(length, '\0');
    ::compress2(reinterpret_cast<Bytef*>(stream.data()), &length, bytesOf(bytes),
                static_cast<uLong>(bytes.size()), level);
    stream.resize(length);
    return stream;
}

void appendChunk(std::string& png, std::string_view type, std::string_view data) {
    appendBigEndian32(png, static_cast<std::uint32_t>(data.size()));
    const std::string body = std::string(type).append(data);
    png += body;
    appendBigEndian32(png,
                      static_cast<std::uint32_t>(::crc32(0, bytesOf(body), static_cast<uInt>(body.size()))));
}

// Each row after the number of its filter: what the pixel on its left leaves, which packs well, or none.
std::string filtered(std::string_view samples, std::size_t rowLength, std::size_t pixelLength,
                     bool isPacked) {
    std::string rows;
    rows.reserve(samples.size() + samples.size() / rowLength);
    for (std::size_t begin = 0; begin < samples.size(); begin += rowLength) {
        rows += isPacked ? '\1' : '\0';
        for (std::size_t i = 0; i < rowLength; ++i) {
            const auto left = isPacked && i >= pixelLength ? samples[begin + i - pixelLength] : '\0';
            rows += static_cast<char>(samples[begin + i] - left);
        }
    }
    return rows;
}

} // namespace

std::string pngFile(PngColour colour, int width, int height, std::string_view samples,
                    const std::vector<PngRemark>& texts, bool isPacked) {
    const std::size_t pixelLength = colour == PngColour::rgba ? 4 : 3;
    std::string header;
    appendBigEndian32(header, static_cast<std::uint32_t>(width));
    appendBigEndian32(header, static_cast<std::uint32_t>(height));
    header += '\x08'; // bits of a sample
    header += static_cast<char>(colour);
    header += std::string(3, '\0'); // the only packing, the only filters, not interlaced

    std::string png = "\x89PNG\r\n\x1a\n";
    appendChunk(png, "IHDR", header);
    for (const auto& [keyword, text] : texts) {
        appendChunk(png, "tEXt", keyword + '\0' + text);
    }
    const auto rows = filtered(samples, static_cast<std::size_t>(width) * pixelLength, pixelLength, isPacked);
    appendChunk(png, "IDAT", deflated(rows, isPacked ? Z_BEST_SPEED : Z_NO_COMPRESSION));
    appendChunk(png, "IEND", "");
    return png;
}

} // namespace quillane
