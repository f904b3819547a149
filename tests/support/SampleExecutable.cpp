#include "SampleExecutable.h"
#include "BigEndian.h"
#include <algorithm>

namespace quillane::SampleExecutable {
namespace {

constexpr std::uint32_t kMagic32 = 0xFEEDFACE;
constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
constexpr std::uint32_t kFatMagic = 0xCAFEBABE;
constexpr std::uint32_t kFatMagic64 = 0xCAFEBABF;
constexpr std::uint32_t kExecutableFileType = 2;
constexpr std::uint32_t k64BitFlag = 0x01000000;
constexpr std::uint32_t kAlignment = 14; // as a power of two: pages of 16 KB

// The seven or eight words of a Mach-O header, big-endian.
std::string header(Cpu cpu) {
    const auto code = static_cast<std::uint32_t>(cpu);
    const bool is64 = (code & k64BitFlag) != 0;
    std::string bytes;
    appendBigEndian32(bytes, is64 ? kMagic64 : kMagic32);
    appendBigEndian32(bytes, code);
    appendBigEndian32(bytes, 0); // any sub-type
    appendBigEndian32(bytes, kExecutableFileType);
    bytes.append(is64 ? 16 : 12, '\0'); // no load commands, no flags
    return bytes;
}

std::string withWordsReversed(std::string bytes) {
    for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(i),
                     bytes.begin() + static_cast<std::ptrdiff_t>(i) + 4);
    }
    return bytes;
}

} // namespace

std::string thin(Cpu cpu) {
    return withWordsReversed(header(cpu));
}

std::string byteSwapped(Cpu cpu) {
    return header(cpu);
}

std::string fat(const std::vector<Cpu>& cpus) {
    std::string bytes;
    appendBigEndian32(bytes, kFatMagic);
    appendBigEndian32(bytes, static_cast<std::uint32_t>(cpus.size()));
    for (const Cpu cpu : cpus) {
        for (const std::uint32_t field : {static_cast<std::uint32_t>(cpu), 0U, 0x4000U, 32U, kAlignment}) {
            appendBigEndian32(bytes, field);
        }
    }
    return bytes;
}

std::string fat64(const std::vector<Cpu>& cpus) {
    std::string bytes;
    appendBigEndian32(bytes, kFatMagic64);
    appendBigEndian32(bytes, static_cast<std::uint32_t>(cpus.size()));
    for (const Cpu cpu : cpus) {
        for (const std::uint32_t field :
             {static_cast<std::uint32_t>(cpu), 0U, 0U, 0x4000U, 0U, 32U, kAlignment, 0U}) {
            appendBigEndian32(bytes, field);
        }
    }
    return bytes;
}

std::string script() {
    return "#!/bin/sh\nexec \"$(dirname \"$0\")/../Resources/run\" \"$@\"\n";
}

std::string damaged() {
    std::string bytes;
    appendBigEndian32(bytes, kFatMagic);
    return bytes;
}

} // namespace quillane::SampleExecutable
