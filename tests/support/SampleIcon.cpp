#include "SampleIcon.h"
#include "BigEndian.h"
#include "PngFile.h"
#include <algorithm>
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

// The rows of the picture.
std::string samplesOf(const SampleIcon& icon, int side) {
    std::string samples;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            appendPixel(samples, icon, (column + 0.5) * 2 / side - 1, (row + 0.5) * 2 / side - 1, side);
        }
    }
    return samples;
}

void appendIcnsEntry(std::string& icns, std::string_view type, std::string_view png) {
    icns += type;
    appendBigEndian32(icns, static_cast<std::uint32_t>(png.size() + 8));
    icns += png;
}

} // namespace

std::string pngOf(const SampleIcon& icon, int side) {
    return pngFile(PngColour::rgba, side, side, samplesOf(icon, side), {}, false);
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
