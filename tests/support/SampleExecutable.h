#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The first bytes of executables, as the Mach-O and fat formats lay them out.
namespace quillane::SampleExecutable {

// Processors by the numbers of the format.
enum class Cpu : std::uint32_t {
    i386 = 7,
    arm = 12,
    powerPC = 18,
    x86_64 = 0x01000007,
    arm64 = 0x0100000C,
    powerPC64 = 0x01000012
};

// One processor; little-endian, with the 32-bit or the 64-bit header that suits it.
std::string thin(Cpu cpu);
// The same as a big-endian machine wrote it.
std::string byteSwapped(Cpu cpu);
// Several processors, with 32-bit offsets.
std::string fat(const std::vector<Cpu>& cpus);
// Several processors, with 64-bit offsets.
std::string fat64(const std::vector<Cpu>& cpus);
// A shell script.
std::string script();
// A valid magic with nothing behind it.
std::string damaged();

} // namespace quillane::SampleExecutable
