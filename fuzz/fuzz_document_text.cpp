#include "HtmlText.h"
#include "MessageText.h"
#include "OfficeText.h"
#include "RtfText.h"
#include "TextSink.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quillane;

namespace {

constexpr std::size_t kMost = std::size_t{64} << 10U;

// A page, a rich text, a mail or a part of an office document, by the first byte.
void read(std::uint8_t kind, std::string_view bytes, TextSink& sink) {
    constexpr std::uint8_t kKinds = 6;
    switch (kind % kKinds) {
    case 0:
        return HtmlText::add(bytes, sink);
    case 1:
        return RtfText::add(bytes, sink);
    case 2:
        return MessageText::add(bytes, sink);
    case 3:
        return OfficeText::add(bytes, OfficeText::Part::words, sink);
    case 4:
        return OfficeText::add(bytes, OfficeText::Part::openDocument, sink);
    default:
        return OfficeText::add(bytes, OfficeText::Part::sheet, sink);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view document(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    TextSink sink(kMost);
    read(bytes[0], document, sink);
    const std::string_view text = sink.text();
    // No bytes of a document become more than a few of text: bombs are for archives.
    const bool isTooMuch = text.size() > kMost + 3 || text.size() > document.size() * 6;
    const bool isUntidy =
        text.starts_with(' ') || text.ends_with(' ') || text.find("  ") != std::string_view::npos;
    if (isTooMuch || isUntidy) {
        std::abort();
    }
    return 0;
}
