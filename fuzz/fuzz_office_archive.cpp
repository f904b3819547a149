#include "FileSystem.h"
#include "OfficeArchive.h"
#include "TextSink.h"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

using namespace quillane;

namespace {

class BytesFile final : public OpenFile {
  public:
    explicit BytesFile(std::string_view bytes)
        : m_bytes(bytes) {}

    Result<std::size_t> readAt(std::span<std::byte> buffer, Bytes offset) override {
        if (offset < 0) {
            std::abort();
        }
        const auto begin = std::min(static_cast<std::size_t>(offset), m_bytes.size());
        const auto count = std::min(buffer.size(), m_bytes.size() - begin);
        std::copy_n(reinterpret_cast<const std::byte*>(m_bytes.data()) + begin, count, buffer.data());
        return count;
    }
    Result<Bytes> length() override { return static_cast<Bytes>(m_bytes.size()); }
    Result<> close() override { return success(); }

  private:
    std::string_view m_bytes;
};

} // namespace

// The input is a document as it lies on the disk; the library that unpacks it is driven as the program does.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t kMost = std::size_t{64} << 10U;
    BytesFile file(std::string_view(reinterpret_cast<const char*>(bytes), size));
    OfficeArchive::Limits limits;
    limits.member = limits.words = limits.sheets = kMost;
    TextSink sink(kMost);
    if (!OfficeArchive::add(file, limits, {}, sink) || sink.text().size() > kMost + 3) {
        std::abort();
    }
    return 0;
}
