#include "PlainText.h"
#include "ScreenCapture.h"
#include "Utf8.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace quillane;

// The input is the start of a file that lies among a person's own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    const auto text = PlainText::decoded(input);
    if (text.size() > input.size() * 2 || (!input.starts_with("\xEF\xBB\xBF") && !Utf8::isValid(text))) {
        std::abort();
    }
    const auto unclaimed = PlainText::decoded(input, PlainText::Claim::none);
    if (!unclaimed.empty() && unclaimed != text) {
        std::abort();
    }
    (void)ScreenCapture::isAttributeTrue(input);
    if (ScreenCapture::isMarkedPng(input) && input.find("tEXtSoftware") == std::string_view::npos) {
        std::abort();
    }
    return 0;
}
