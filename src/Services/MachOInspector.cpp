#include "MachOInspector.h"
#include "FileSystem.h"
#include <cstdint>
#include <set>

namespace quillane::MachOInspector {

namespace {

using Head = std::span<const unsigned char>;
using CpuTypes = std::set<std::uint32_t>;

// Processor types of the Mach-O format. The sub-type is not looked at, so arm64e is arm64.
constexpr std::uint32_t kI386 = 7;
constexpr std::uint32_t kX86_64 = 0x01000007;
constexpr std::uint32_t kArm64 = 0x0100000C;
constexpr std::uint32_t kPowerPC = 18;
constexpr std::uint32_t kPowerPC64 = 0x01000012;

// Fat files are big-endian whatever they hold. Their records differ in length: offsets of 32 or 64 bits.
constexpr std::uint32_t kFatMagic = 0xCAFEBABE;
constexpr std::uint32_t kFatMagic64 = 0xCAFEBABF;
constexpr std::size_t kFatHeaderSize = 8;
constexpr std::size_t kFatRecordSize = 20;
constexpr std::size_t kFatRecordSize64 = 32;
// No real file has more, so that a table always fits into the head that is read. A compiled Java class begins with
// the same four bytes, and this does not tell it apart: its version stands where the number is, and up to Java 19
// that is 45 to 63. What its constants hold in the places of the types is seldom one, but now and then it is, and
// then the class passes as a program for that processor. It would have to be what a bundle names as its executable,
// and an architecture is shown and counted but never decides what is removed.
constexpr std::uint32_t kMostFatRecords = 63;

constexpr std::uint32_t kMagic32 = 0xFEEDFACE;
constexpr std::uint32_t kMagic64 = 0xFEEDFACF;
constexpr std::uint32_t kSwappedMagic32 = 0xCEFAEDFE;
constexpr std::uint32_t kSwappedMagic64 = 0xCFFAEDFE;

constexpr std::size_t kWord = 4;

// Both readers give 0 where fewer than four bytes are left.
std::uint32_t be32(Head bytes, std::size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < kWord) {
        return 0;
    }
    std::uint32_t number = 0;
    for (const auto byte : bytes.subspan(offset, kWord)) {
        number = number << 8U | byte;
    }
    return number;
}

std::uint32_t le32(Head bytes, std::size_t offset) {
    return __builtin_bswap32(be32(bytes, offset));
}

// The types of the records that lie wholly enough in `bytes` to be read.
CpuTypes fatCpuTypes(Head bytes, std::size_t recordSize) {
    const auto count = be32(bytes, kWord);
    if (count == 0 || count > kMostFatRecords) {
        return {};
    }
    CpuTypes types;
    for (std::size_t i = 0; i < count; ++i) {
        const auto record = kFatHeaderSize + i * recordSize;
        if (bytes.size() < record + kWord) {
            break;
        }
        types.insert(be32(bytes, record));
    }
    return types;
}

CpuTypes cpuTypes(Head bytes) {
    if (bytes.size() < kFatHeaderSize) {
        return {};
    }
    switch (be32(bytes, 0)) {
    case kFatMagic:
        return fatCpuTypes(bytes, kFatRecordSize);
    case kFatMagic64:
        return fatCpuTypes(bytes, kFatRecordSize64);
    default:
        break;
    }
    switch (le32(bytes, 0)) {
    case kMagic32:
    case kMagic64:
        return {le32(bytes, kWord)};
    case kSwappedMagic32:
    case kSwappedMagic64:
        return {be32(bytes, kWord)};
    default:
        return {};
    }
}

Architecture classify(const CpuTypes& types) {
    const bool hasIntel = types.contains(kX86_64);
    const bool hasArm = types.contains(kArm64);
    if (hasIntel && hasArm) {
        return Architecture::universal;
    }
    if (hasIntel) {
        return Architecture::intel;
    }
    if (hasArm) {
        return Architecture::appleSilicon;
    }
    if (types.contains(kI386)) {
        return Architecture::intel32;
    }
    if (types.contains(kPowerPC) || types.contains(kPowerPC64)) {
        return Architecture::powerPC;
    }
    return Architecture::unknown;
}

} // namespace

Architecture architecture(const Platform& platform, const FileURL& executable) {
    const auto head = platform.files.read(executable, kHeadBytes);
    if (!head) {
        return Architecture::unknown;
    }
    return architectureOfHead({reinterpret_cast<const unsigned char*>(head->data()), head->size()});
}

Architecture architectureOfHead(std::span<const unsigned char> head) {
    return classify(cpuTypes(head));
}

} // namespace quillane::MachOInspector
