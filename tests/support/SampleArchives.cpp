#include "SampleArchives.h"
#include "LittleEndian.h"
#include <fmt/format.h>
#include <zlib.h>

namespace quillane::SampleArchives {
namespace {

constexpr std::uint64_t kVersion = 20;
constexpr std::uint64_t kNamesAreUtf8 = 0x0800;
constexpr std::uint64_t kFirstOfMay2024 = 0x58A1;
constexpr std::size_t kTarBlock = 512;

// What the entry of a member and its row of the directory have in common.
std::string description(const Member& member) {
    std::string text;
    appendLittleEndian16(text, kVersion);
    appendLittleEndian16(text, kNamesAreUtf8);
    appendLittleEndian16(text, 0); // stored
    appendLittleEndian16(text, 0); // at midnight
    appendLittleEndian16(text, kFirstOfMay2024);
    const auto* const bytes = reinterpret_cast<const Bytef*>(member.content.data());
    appendLittleEndian32(text, ::crc32(0, bytes, static_cast<uInt>(member.content.size())));
    appendLittleEndian32(text, member.content.size());
    appendLittleEndian32(text, member.content.size());
    appendLittleEndian16(text, member.name.size());
    appendLittleEndian16(text, 0); // no extra field
    return text;
}

std::string directoryRow(const Member& member, std::size_t offset) {
    std::string row = "PK\1\2";
    appendLittleEndian16(row, kVersion);
    row += description(member);
    row += std::string(10, '\0'); // no comment, first disk, no attributes
    appendLittleEndian32(row, offset);
    return row + member.name;
}

std::string octal(std::size_t value, int digits) {
    return fmt::format("{:0{}o}", value, digits) + '\0';
}

std::string tarHeader(const Member& member) {
    std::string header = member.name;
    header.resize(100);
    header += octal(0644, 7) + octal(1000, 7) + octal(1000, 7) + octal(member.content.size(), 11) +
              octal(1'714'521'600, 11);
    const auto checksumAt = header.size();
    header += std::string(8, ' ') + '0' + std::string(100, '\0') + std::string("ustar\00000", 8);
    header.resize(kTarBlock);
    std::size_t sum = 0;
    for (const char c : header) {
        sum += static_cast<unsigned char>(c);
    }
    return header.replace(checksumAt, 7, octal(sum, 6));
}

} // namespace

std::string zip(const std::vector<Member>& members) {
    std::string archive;
    std::string directory;
    for (const auto& member : members) {
        directory += directoryRow(member, archive.size());
        archive += "PK\3\4" + description(member) + member.name + member.content;
    }
    std::string end = "PK\5\6";
    appendLittleEndian32(end, 0); // one disk
    appendLittleEndian16(end, members.size());
    appendLittleEndian16(end, members.size());
    appendLittleEndian32(end, directory.size());
    appendLittleEndian32(end, archive.size());
    appendLittleEndian16(end, 0); // no comment
    return archive + directory + end;
}

std::string tar(const std::vector<Member>& members) {
    std::string archive;
    for (const auto& member : members) {
        archive += tarHeader(member) + member.content;
        archive.resize((archive.size() + kTarBlock - 1) / kTarBlock * kTarBlock);
    }
    return archive + std::string(2 * kTarBlock, '\0');
}

} // namespace quillane::SampleArchives
