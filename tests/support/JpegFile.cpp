#include "JpegFile.h"
#include "BigEndian.h"
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <utility>

namespace quillane {
namespace {

constexpr int kSide = 8;
constexpr std::size_t kBlock = 64;
constexpr int kDcCodeBits = 4;
constexpr int kAcCodeBits = 8;
constexpr int kDcSymbols = 12; // the sizes of a difference: 0 to 11 bits
constexpr int kLargestAc = 1023;

using Block = std::array<float, kBlock>;

// The places of a block in the order in which they are written: along the diagonals, to and fro.
std::array<std::size_t, kBlock> zigZag() {
    std::array<std::size_t, kBlock> order{};
    std::size_t next = 0;
    for (int sum = 0; sum <= 2 * (kSide - 1); ++sum) {
        for (int step = 0; step <= sum; ++step) {
            const int x = sum % 2 == 0 ? step : sum - step;
            const int y = sum - x;
            if (x < kSide && y < kSide) {
                order[next++] = static_cast<std::size_t>(y * kSide + x);
            }
        }
    }
    return order;
}

// What each place is divided by: fine detail is told more coarsely.
std::array<int, kBlock> divisors(int coarseness) {
    std::array<int, kBlock> steps{};
    for (std::size_t i = 0; i < kBlock; ++i) {
        const int frequency = static_cast<int>(i % kSide + i / kSide);
        steps[i] = std::min(1 + coarseness * (1 + frequency) / 4, 255);
    }
    return steps;
}

// The AC symbols: how many zeros stand before a value, and its size in bits. The end of a block, sixteen zeros, and
// then ten sizes for each run.
std::array<std::uint8_t, 162> acSymbols() {
    std::array<std::uint8_t, 162> symbols{};
    std::size_t next = 0;
    symbols[next++] = 0x00;
    symbols[next++] = 0xF0;
    for (unsigned run = 0; run < 16; ++run) {
        for (unsigned size = 1; size <= 10; ++size) {
            symbols[next++] = static_cast<std::uint8_t>((run << 4U) | size);
        }
    }
    return symbols;
}

// As codes have one length, the code of a symbol is its place in that table.
unsigned acCode(unsigned run, unsigned size) {
    return 2 + run * 10 + size - 1;
}
constexpr unsigned kEndOfBlock = 0;
constexpr unsigned kSixteenZeros = 1;

class BitWriter {
  public:
    explicit BitWriter(std::string& bytes)
        : m_bytes(bytes) {}

    void put(unsigned value, int count) {
        for (int bit = count - 1; bit >= 0; --bit) {
            m_byte = (m_byte << 1U) | ((value >> static_cast<unsigned>(bit)) & 1U);
            if (++m_filled == 8) {
                emit();
            }
        }
    }
    void finish() {
        while (m_filled != 0) {
            put(1, 1);
        }
    }

  private:
    void emit() {
        m_bytes += static_cast<char>(m_byte);
        if (m_byte == 0xFF) {
            m_bytes += '\0'; // not a marker
        }
        m_byte = 0;
        m_filled = 0;
    }

    std::string& m_bytes;
    unsigned m_byte = 0;
    int m_filled = 0;
};

unsigned sizeOf(int value) {
    return static_cast<unsigned>(std::bit_width(static_cast<unsigned>(std::abs(value))));
}

void putValue(BitWriter& bits, int value, unsigned size) {
    const int told = value < 0 ? value + static_cast<int>((1U << size) - 1) : value;
    bits.put(static_cast<unsigned>(told), static_cast<int>(size));
}

// One pass of the cosine transform, along the rows; the result is turned, so that a second pass takes the columns.
Block transformedRows(const Block& block) {
    static const auto cosines = [] {
        Block table{};
        for (int u = 0; u < kSide; ++u) {
            for (int x = 0; x < kSide; ++x) {
                const double scale = u == 0 ? std::numbers::sqrt2 / 4 : 0.5;
                table[static_cast<std::size_t>(u * kSide + x)] =
                    static_cast<float>(scale * std::cos((2 * x + 1) * u * std::numbers::pi / 16));
            }
        }
        return table;
    }();
    Block turned{};
    for (std::size_t row = 0; row < kSide; ++row) {
        for (std::size_t u = 0; u < kSide; ++u) {
            float sum = 0;
            for (std::size_t x = 0; x < kSide; ++x) {
                sum += cosines[u * kSide + x] * block[row * kSide + x];
            }
            turned[u * kSide + row] = sum;
        }
    }
    return turned;
}

// Brightness or one of the two differences of colour, of one pixel, around zero.
float componentOf(std::string_view pixel, int component) {
    const auto red = static_cast<float>(static_cast<unsigned char>(pixel[0]));
    const auto green = static_cast<float>(static_cast<unsigned char>(pixel[1]));
    const auto blue = static_cast<float>(static_cast<unsigned char>(pixel[2]));
    switch (component) {
    case 0:
        return 0.299F * red + 0.587F * green + 0.114F * blue - 128;
    case 1:
        return -0.168736F * red - 0.331264F * green + 0.5F * blue;
    default:
        return 0.5F * red - 0.418688F * green - 0.081312F * blue;
    }
}

struct Picture {
    int width;
    int height;
    std::string_view rgb;

    // What lies beyond the edge looks like the edge.
    Block block(int left, int top, int component) const {
        Block block{};
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                const auto row = static_cast<std::size_t>(std::min(top + y, height - 1));
                const auto column = static_cast<std::size_t>(std::min(left + x, width - 1));
                block[static_cast<std::size_t>(y * kSide + x)] = componentOf(
                    rgb.substr((row * static_cast<std::size_t>(width) + column) * 3, 3), component);
            }
        }
        return block;
    }
};

class BlockWriter {
  public:
    BlockWriter(std::string& bytes, int coarseness)
        : m_bits(bytes)
        , m_divisors(divisors(coarseness)) {}

    void write(const Block& block, std::size_t component) {
        const auto transformed = transformedRows(transformedRows(block));
        std::array<int, kBlock> values{};
        for (std::size_t i = 0; i < kBlock; ++i) {
            const auto place = m_order[i];
            values[i] =
                static_cast<int>(std::lround(transformed[place] / static_cast<float>(m_divisors[place])));
        }
        writeDifference(values[0] - std::exchange(m_before[component], values[0]));
        writeDetail(values);
    }
    void finish() { m_bits.finish(); }

  private:
    void writeDifference(int difference) {
        const auto size = sizeOf(difference);
        m_bits.put(size, kDcCodeBits);
        putValue(m_bits, difference, size);
    }
    void writeDetail(const std::array<int, kBlock>& values) {
        unsigned zeros = 0;
        for (std::size_t i = 1; i < kBlock; ++i) {
            const int value = std::clamp(values[i], -kLargestAc, kLargestAc);
            if (value == 0) {
                ++zeros;
                continue;
            }
            for (; zeros >= 16; zeros -= 16) {
                m_bits.put(kSixteenZeros, kAcCodeBits);
            }
            const auto size = sizeOf(value);
            m_bits.put(acCode(zeros, size), kAcCodeBits);
            putValue(m_bits, value, size);
            zeros = 0;
        }
        if (zeros > 0) {
            m_bits.put(kEndOfBlock, kAcCodeBits);
        }
    }

    BitWriter m_bits;
    const std::array<int, kBlock> m_divisors;
    const std::array<std::size_t, kBlock> m_order = zigZag();
    std::array<int, 3> m_before{};
};

void appendSegment(std::string& jpeg, char marker, std::string_view content) {
    jpeg += '\xFF';
    jpeg += marker;
    appendBigEndian(jpeg, content.size() + 2, 2);
    jpeg += content;
}

std::string divisorTable(int coarseness) {
    const auto steps = divisors(coarseness);
    std::string table(1, '\0');
    for (const auto place : zigZag()) {
        table += static_cast<char>(steps[place]);
    }
    return table;
}

// How many codes have one bit, two, up to sixteen, and then their symbols.
template <class Symbols>
std::string codeTable(char number, int bits, const Symbols& symbols) {
    std::string table(1, number);
    for (int length = 1; length <= 16; ++length) {
        table += length == bits ? static_cast<char>(symbols.size()) : '\0';
    }
    for (const auto symbol : symbols) {
        table += static_cast<char>(symbol);
    }
    return table;
}

std::string frame(int width, int height) {
    std::string frame = "\x08";
    appendBigEndian(frame, static_cast<std::uint64_t>(height), 2);
    appendBigEndian(frame, static_cast<std::uint64_t>(width), 2);
    frame += '\3';
    for (const char component : {'\1', '\2', '\3'}) {
        frame += component;
        frame += std::string("\x11\0", 2); // in full resolution, by the one table of divisors
    }
    return frame;
}

} // namespace

std::string jpegFile(int width, int height, std::string_view rgb, int coarseness) {
    std::string dcSymbols;
    for (char size = 0; size < kDcSymbols; ++size) {
        dcSymbols += size;
    }
    std::string jpeg = "\xFF\xD8";
    appendSegment(jpeg, '\xE0', std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
    appendSegment(jpeg, '\xDB', divisorTable(coarseness));
    appendSegment(jpeg, '\xC0', frame(width, height));
    appendSegment(jpeg, '\xC4', codeTable('\x00', kDcCodeBits, dcSymbols));
    appendSegment(jpeg, '\xC4', codeTable('\x10', kAcCodeBits, acSymbols()));
    appendSegment(jpeg, '\xDA', std::string("\3\1\0\2\0\3\0\0\x3F\0", 10));

    const Picture picture{width, height, rgb};
    BlockWriter writer(jpeg, coarseness);
    for (int top = 0; top < height; top += kSide) {
        for (int left = 0; left < width; left += kSide) {
            for (int component = 0; component < 3; ++component) {
                writer.write(picture.block(left, top, component), static_cast<std::size_t>(component));
            }
        }
    }
    writer.finish();
    return jpeg + "\xFF\xD9";
}

} // namespace quillane
