#include "BulkEntries.h"
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

using namespace quillane;

namespace {

bool isSound(const RawEntry& entry, std::span<const std::byte> answer) {
    const auto* begin = reinterpret_cast<const char*>(answer.data());
    if (entry.name < begin || entry.length == 0 || entry.name + entry.length >= begin + answer.size()) {
        return false;
    }
    const std::string_view name(entry.name, entry.length);
    const bool isName = std::memchr(entry.name, 0, entry.length + 1) == entry.name + entry.length &&
                        name.find('/') == std::string_view::npos && name != "." && name != "..";
    const bool isFile = entry.type == EntryType::regular;
    const bool isFolder = entry.type == EntryType::directory;
    return isName && (!entry.allocated || (isFile && *entry.allocated >= 0)) &&
           (!entry.isMarkedAsPackage || isFolder);
}

} // namespace

// The first byte is how many entries were promised, the second how many of them are passed over.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const auto answer = std::as_bytes(std::span(bytes + 2, size - 2));
    BulkEntries entries(answer, bytes[0]);
    entries.skip(bytes[1]);
    RawEntry entry;
    std::size_t told = bytes[1];
    while (entries.next(entry)) {
        ++told;
        if (!isSound(entry, answer)) {
            __builtin_trap();
        }
    }
    if (told > bytes[0] && told > bytes[1]) {
        __builtin_trap();
    }
    return 0;
}
