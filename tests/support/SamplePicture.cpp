#include "SamplePicture.h"
#include "JpegFile.h"
#include <algorithm>
#include <array>
#include <cmath>

namespace quillane {
namespace {

struct Colour {
    double red = 0;
    double green = 0;
    double blue = 0;
};

Colour mixed(const Colour& a, const Colour& b, double part) {
    const double rest = 1 - part;
    return {a.red * rest + b.red * part, a.green * rest + b.green * part, a.blue * rest + b.blue * part};
}

// Always the same numbers for one start, from 0 to 1.
class Dice {
  public:
    explicit Dice(std::uint32_t number)
        : m_state(number * 2'654'435'761U + 1'013'904'223U) {}
    double next() {
        m_state ^= m_state << 13U;
        m_state ^= m_state >> 17U;
        m_state ^= m_state << 5U;
        return static_cast<double>(m_state >> 8U) / 16'777'216.0;
    }
    double between(double low, double high) { return low + (high - low) * next(); }

  private:
    std::uint32_t m_state;
};

char sample(double value) {
    return static_cast<char>(static_cast<unsigned char>(std::clamp(value, 0.0, 255.0)));
}

// Asks for the colour at each pixel; x and y run from 0 to 1.
template <class ColourAt>
SamplePicture drawn(int width, int height, double grain, const ColourAt& colourAt) {
    SamplePicture picture{width, height, {}};
    picture.rgb.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3);
    Dice dice(static_cast<std::uint32_t>(width));
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const Colour colour = colourAt((column + 0.5) / width, (row + 0.5) / height);
            const double noise = grain > 0 ? dice.between(-grain, grain) : 0;
            picture.rgb += sample(colour.red + noise);
            picture.rgb += sample(colour.green + noise);
            picture.rgb += sample(colour.blue + noise);
        }
    }
    return picture;
}

// The outline of a row of hills, kept for as many places as a picture may be wide.
class Ridge {
  public:
    Ridge(double base, Dice& dice)
        : m_tops(kPlaces) {
        std::array<double, 4> heights{};
        std::array<double, 4> phases{};
        double height = dice.between(0.04, 0.09);
        for (std::size_t i = 0; i < heights.size(); ++i) {
            heights[i] = height;
            phases[i] = dice.between(0, 6.28);
            height *= 0.42;
        }
        for (std::size_t place = 0; place < kPlaces; ++place) {
            const double x = static_cast<double>(place) / kPlaces;
            double frequency = 3;
            m_tops[place] = base;
            for (std::size_t i = 0; i < heights.size(); ++i) {
                m_tops[place] -= heights[i] * std::sin(frequency * x + phases[i]);
                frequency *= 2.3;
            }
        }
    }
    double at(double x) const {
        return m_tops[static_cast<std::size_t>(std::clamp(x, 0.0, 0.9999) * kPlaces)];
    }

  private:
    static constexpr std::size_t kPlaces = 2'048;
    std::vector<double> m_tops;
};

struct Landscape {
    Colour zenith;
    Colour horizon;
    Colour near;
    double aspect = 1; // of the picture, so that the sun is round
    double sunX = 0;
    double sunY = 0;
    std::vector<Ridge> ridges;

    static constexpr double kShore = 0.72;

    Colour above(double x, double y) const {
        for (std::size_t i = ridges.size(); i > 0; --i) {
            if (y > ridges[i - 1].at(x)) {
                return mixed(horizon, near, 0.3 + 0.7 * static_cast<double>(i) / 4);
            }
        }
        const double distance = std::hypot((x - sunX) * aspect, y - sunY);
        const Colour sky = mixed(zenith, horizon, std::min(y * 1.6, 1.0));
        const double glow = distance < 0.035 ? 1 : 0.5 * std::exp(-distance * 7);
        return mixed(sky, {255, 246, 214}, glow);
    }
    Colour at(double x, double y) const {
        if (y <= kShore) {
            return above(x, y);
        }
        const double depth = y - kShore;
        const double wave = 0.006 * std::sin(260 * depth / (0.15 + depth) + 9 * x);
        return mixed(above(x + wave, kShore - depth * 1.2 - std::abs(wave)), zenith, 0.25 + depth);
    }
};

Landscape landscapeOf(std::uint32_t number, double aspect) {
    constexpr std::array<std::array<Colour, 3>, 5> kLights = {{
        {{{64, 124, 196}, {214, 228, 236}, {38, 72, 52}}},  // noon
        {{{70, 74, 132}, {250, 176, 112}, {40, 34, 58}}},   // evening
        {{{140, 168, 190}, {232, 224, 208}, {72, 88, 84}}}, // haze
        {{{30, 52, 104}, {232, 140, 150}, {22, 26, 48}}},   // dusk
        {{{92, 150, 180}, {240, 236, 200}, {96, 84, 40}}},  // autumn
    }};
    Dice dice(number);
    const auto& light = kLights[number % kLights.size()];
    Landscape scene{light[0], light[1], light[2], aspect, dice.between(0.15, 0.85), dice.between(0.1, 0.3),
                    {}};
    for (const double base : {0.45, 0.53, 0.61, 0.69}) {
        scene.ridges.emplace_back(base, dice);
    }
    return scene;
}

// Words as they look from afar: grey strokes in lines that end anywhere.
double ink(double x, double y, double lines, std::uint32_t number) {
    const double line = std::floor(y * lines);
    const double inLine = y * lines - line;
    Dice dice(number + static_cast<std::uint32_t>(line) * 97U);
    const double end = dice.between(0.45, 1.0);
    if (inLine < 0.3 || inLine > 0.7 || x < 0 || x > end) {
        return 0;
    }
    const double word = std::sin(x * 61 + line * 1.7) + std::sin(x * 37 + line * 2.9);
    return word > -0.9 ? 0.75 : 0;
}

struct Pane {
    double left;
    double top;
    double width;
    double height;

    bool holds(double x, double y) const {
        return x >= left && y >= top && x < left + width && y < top + height;
    }
};

Colour paneColour(const Pane& pane, double x, double y, const Colour& tint, std::uint32_t number) {
    const double inX = (x - pane.left) / pane.width;
    const double inY = (y - pane.top) / pane.height;
    if (inY < 0.09) {
        const double button = std::fmod(inX, 0.035) / 0.035;
        const bool isButton = inX < 0.105 && button > 0.3 && button < 0.8 && inY > 0.03 && inY < 0.06;
        return isButton ? tint : Colour{226, 228, 232};
    }
    if (inX < 0.24) {
        const Colour side{240, 241, 244};
        return mixed(side, {90, 96, 110}, ink((inX - 0.03) / 0.19, inY, 18, number + 7));
    }
    const double row = std::floor(inY * 22);
    const Colour ground =
        row == 6 ? tint : (std::fmod(row, 2) == 0 ? Colour{255, 255, 255} : Colour{248, 248, 250});
    const Colour print = row == 6 ? Colour{255, 255, 255} : Colour{60, 64, 74};
    return mixed(ground, print, inX < 0.28 ? 0 : ink((inX - 0.28) / 0.7, inY, 22, number));
}

} // namespace

SamplePicture SamplePicture::landscape(std::uint32_t number, int width, int height) {
    const auto scene = landscapeOf(number, static_cast<double>(width) / height);
    return drawn(width, height, 5, [&](double x, double y) { return scene.at(x, y); });
}

SamplePicture SamplePicture::paper(std::uint32_t number, int width, int height) {
    return drawn(width, height, 3, [&](double x, double y) {
        const double sheetX = (x - 0.12 + 0.05 * (y - 0.5)) / 0.76;
        const double sheetY = (y - 0.05 - 0.03 * (x - 0.5)) / 0.9;
        if (sheetX < 0 || sheetX > 1 || sheetY < 0 || sheetY > 1) {
            return mixed({112, 78, 52}, {92, 62, 40}, 0.5 + 0.5 * std::sin(x * 40 + y * 5));
        }
        const Colour paper = mixed({250, 247, 238}, {222, 216, 204}, y);
        const bool isText = sheetX > 0.1 && sheetX < 0.9 && sheetY > 0.1 && sheetY < 0.9;
        const double print = isText ? ink((sheetX - 0.1) / 0.8, (sheetY - 0.1) / 0.8, 34, number) : 0;
        return mixed(paper, {48, 46, 52}, print);
    });
}

SamplePicture SamplePicture::screen(std::uint32_t number, int width, int height) {
    Dice dice(number);
    const Colour tint{dice.between(40, 90), dice.between(80, 140), dice.between(180, 230)};
    const Pane behind{dice.between(0.05, 0.15), dice.between(0.1, 0.2), 0.6, 0.6};
    const Pane before{dice.between(0.3, 0.38), dice.between(0.28, 0.34), 0.58, 0.6};
    return drawn(width, height, 0, [&](double x, double y) {
        if (y < 0.03) {
            return Colour{34, 36, 44};
        }
        if (before.holds(x, y)) {
            return paneColour(before, x, y, tint, number + 1);
        }
        if (behind.holds(x, y)) {
            return paneColour(behind, x, y, {160, 164, 172}, number + 2);
        }
        return mixed(mixed(tint, {16, 20, 60}, y), {236, 160, 150}, x * y * 0.6);
    });
}

SamplePicture SamplePicture::lamp(int width, int height) {
    return drawn(width, height, 4, [](double x, double y) {
        const double shade = std::abs(x - 0.5) - 0.1 - (y - 0.25) * 0.35;
        if (y > 0.25 && y < 0.48 && shade < 0) {
            return mixed({255, 236, 190}, {224, 150, 84}, (y - 0.25) * 3.4);
        }
        if (y >= 0.48 && y < 0.78 && std::abs(x - 0.5) < 0.012) {
            return Colour{120, 96, 60};
        }
        const double distance = std::hypot((x - 0.5) * 1.3, y - 0.42);
        const Colour wall = y < 0.78 ? Colour{46, 40, 52} : Colour{74, 48, 34};
        return mixed(wall, {255, 206, 130}, 0.7 * std::exp(-distance * 4.2));
    });
}

std::string pngOf(const SamplePicture& picture, const std::vector<PngRemark>& texts) {
    return pngFile(PngColour::rgb, picture.width, picture.height, picture.rgb, texts);
}

std::string jpegOf(const SamplePicture& picture, int coarseness) {
    return jpegFile(picture.width, picture.height, picture.rgb, coarseness);
}

} // namespace quillane
