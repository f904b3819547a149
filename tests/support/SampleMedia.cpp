#include "SampleMedia.h"
#include "BigEndian.h"
#include "LittleEndian.h"
#include <cmath>
#include <cstdint>

namespace quillane::SampleMedia {
namespace {

constexpr std::uint64_t kRate = 22'050;
constexpr std::uint64_t kBytesOfSample = 2;

} // namespace

std::string wave(double seconds) {
    const auto count = static_cast<std::uint64_t>(seconds * static_cast<double>(kRate));
    std::string file = "RIFF";
    appendLittleEndian32(file, 36 + count * kBytesOfSample);
    file += "WAVEfmt ";
    appendLittleEndian32(file, 16); // bytes of this part
    appendLittleEndian16(file, 1);  // plain samples
    appendLittleEndian16(file, 1);  // mono
    appendLittleEndian32(file, kRate);
    appendLittleEndian32(file, kRate * kBytesOfSample);
    appendLittleEndian16(file, kBytesOfSample);
    appendLittleEndian16(file, kBytesOfSample * 8);
    file += "data";
    appendLittleEndian32(file, count * kBytesOfSample);
    std::uint32_t noise = 1;
    double level = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
        noise = noise * 1'664'525U + 1'013'904'223U;
        level += (static_cast<double>(noise >> 16U) / 65'536 - 0.5 - level) * 0.3; // drops, not hiss
        const double swell = 0.7 + 0.3 * std::sin(static_cast<double>(i) / 9'000);
        appendLittleEndian16(file,
                             static_cast<std::uint16_t>(static_cast<std::int16_t>(level * swell * 24'000)));
    }
    return file;
}

std::string movieHead(Bytes length) {
    std::string head;
    appendBigEndian32(head, 24);
    head += std::string("ftypisom\0\0\2\0isommp41", 20);
    appendBigEndian32(head, 1); // its length follows its name, as it may be long
    head += "mdat";
    appendBigEndian(head, static_cast<std::uint64_t>(length) - 24, 8);
    return head;
}

} // namespace quillane::SampleMedia
