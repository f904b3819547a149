#include "SampleIcon.h"
#include "BigEndian.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace quillane {
namespace {

// Signed distances, negative inside, in units of half the picture: x and y run from -1 to 1, y downwards.

double boxDistance(double x, double y, double half, double radius) {
    const double dx = std::max(std::abs(x) - half + radius, 0.0);
    const double dy = std::max(std::abs(y) - half + radius, 0.0);
    return std::sqrt(dx * dx + dy * dy) - radius;
}

double starDistance(double x, double y) {
    // Folded into one of its ten wedges, a five-pointed star has a single straight edge.
    constexpr double kWedge = 3.14159265358979 / 5;
    const double angle = std::abs(std::remainder(std::atan2(x, -y), 2 * kWedge));
    const double r = std::sqrt(x * x + y * y);
    const double px = r * std::sin(angle);
    const double py = r * std::cos(angle);
    const double innerX = 0.24 * std::sin(kWedge);
    const double innerY = 0.24 * std::cos(kWedge);
    const double outerY = 0.6;
    const double length = std::hypot(innerX, outerY - innerY);
    return ((outerY - innerY) * px + innerX * (py - outerY)) / length;
}

double triangleDistance(double x, double y) {
    const double side = (std::abs(x) * 0.87 - (y + 0.5) * 0.5);
    return std::max(side, y - 0.42);
}

double letterDistance(double x, double y) {
    const double stems = std::abs(std::abs(x) - 0.3) - 0.11;
    const double diagonal = std::abs(x * 0.84 - y * 0.54) - 0.1;
    return std::max(std::min(stems, std::max(diagonal, std::abs(x) - 0.3)), std::abs(y) - 0.48);
}

double shapeDistance(SampleIcon::Shape shape, double x, double y) {
    switch (shape) {
    case SampleIcon::Shape::disc:
        return std::sqrt(x * x + y * y) - 0.42;
    case SampleIcon::Shape::square:
        return boxDistance(x, y, 0.42, 0.12);
    case SampleIcon::Shape::star:
        return starDistance(x, y);
    case SampleIcon::Shape::triangle:
        return triangleDistance(x, y);
    case SampleIcon::Shape::ring:
        return std::abs(std::sqrt(x * x + y * y) - 0.36) - 0.12;
    case SampleIcon::Shape::dome:
        return std::max(std::sqrt(x * x + (y - 0.2) * (y - 0.2)) - 0.48, y - 0.2);
    case SampleIcon::Shape::letterN:
        return letterDistance(x, y);
    }
    return 1;
}

double coverage(double distance, int side) {
    return std::clamp(0.5 - distance * side / 2, 0.0, 1.0);
}

void appendPixel(std::string& row, const SampleIcon& icon, double x, double y, int side) {
    const double shape = coverage(shapeDistance(icon.shape, x, y), side);
    const double light = 1.12 - 0.18 * (y + 1) / 2; // a little darker towards the foot
    for (const int shift : {16, 8, 0}) {
        const double base = std::min(static_cast<double>((icon.rgb >> shift) & 0xFFU) * light, 255.0);
        row += static_cast<char>(static_cast<unsigned char>(std::lround(base + (255.0 - base) * shape)));
    }
    const double alpha = coverage(boxDistance(x, y, 0.94, 0.42), side);
    row += static_cast<char>(static_cast<unsigned char>(std::lround(alpha * 255)));
}

// The rows of the picture, each after the number of its filter (none).
std::string scanLines(const SampleIcon& icon, int side) {
    std::string lines;
    for (int row = 0; row < side; ++row) {
        lines += '\0';
        for (int column = 0; column < side; ++column) {
            appendPixel(lines, icon, (column + 0.5) * 2 / side - 1, (row + 0.5) * 2 / side - 1, side);
        }
    }
    return lines;
}

std::uint32_t crc32Of(std::string_view bytes) {
    static const auto table = [] {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t value = i;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1U) : value >> 1U;
            }
            entries[i] = value;
        }
        return entries;
    }();
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) {
        crc = table[(crc ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

std::uint32_t adler32Of(std::string_view bytes) {
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (const char c : bytes) {
        a = (a + static_cast<unsigned char>(c)) % 65521;
        b = (b + a) % 65521;
    }
    return (b << 16U) | a;
}

// A zlib stream that stores the bytes as they are.
std::string stored(std::string_view bytes) {
    constexpr std::size_t kLargestBlock = 65535;
    std::string stream = "\x78\x01";
    for (std::size_t at = 0; at < bytes.size(); at += kLargestBlock) {
        const auto block = bytes.substr(at, kLargestBlock);
        stream += at + block.size() == bytes.size() ? '\1' : '\0';
        for (const std::size_t word : {block.size(), ~block.size()}) {
            stream += static_cast<char>(word & 0xFFU);
            stream += static_cast<char>((word >> 8U) & 0xFFU);
        }
        stream += block;
    }
    appendBigEndian32(stream, adler32Of(bytes));
    return stream;
}

void appendChunk(std::string& png, std::string_view type, std::string_view data) {
    appendBigEndian32(png, static_cast<std::uint32_t>(data.size()));
    const std::string body = std::string(type).append(data);
    png += body;
    appendBigEndian32(png, crc32Of(body));
}

void appendIcnsEntry(std::string& icns, std::string_view type, std::string_view png) {
    icns += type;
    appendBigEndian32(icns, static_cast<std::uint32_t>(png.size() + 8));
    icns += png;
}

} // namespace

std::string pngOf(const SampleIcon& icon, int side) {
    std::string png = "\x89PNG\r\n\x1a\n";
    std::string header;
    appendBigEndian32(header, static_cast<std::uint32_t>(side));
    appendBigEndian32(header, static_cast<std::uint32_t>(side));
    header += std::string("\x08\x06\0\0\0", 5); // 8 bits, RGBA, not interlaced
    appendChunk(png, "IHDR", header);
    appendChunk(png, "IDAT", stored(scanLines(icon, side)));
    appendChunk(png, "IEND", "");
    return png;
}

std::string icnsOf(const SampleIcon& icon, bool large) {
    std::string entries;
    appendIcnsEntry(entries, "icp5", pngOf(icon, 32));
    if (large) {
        appendIcnsEntry(entries, "ic07", pngOf(icon, 128));
    }
    std::string icns = "icns";
    appendBigEndian32(icns, static_cast<std::uint32_t>(entries.size() + 8));
    return icns + entries;
}

} // namespace quillane
