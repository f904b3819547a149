#include "Charset.h"
#include "Utf8.h"
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unicode/ucnv.h>
#include <utility>

namespace quillane::Charset {
namespace {

struct Close {
    void operator()(UConverter* converter) const { ::ucnv_close(converter); }
};
using OpenConverter = std::unique_ptr<UConverter, Close>;

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.' || c == ':';
}

// Only by a name that the library's own table holds: others it would look for as files.
OpenConverter converterNamed(std::string_view written) {
    if (written.empty() || written.size() > kLongestName || !std::ranges::all_of(written, isNameCharacter)) {
        return nullptr;
    }
    const std::string name(written);
    UErrorCode status = U_ZERO_ERROR;
    if (::ucnv_countAliases(name.c_str(), &status) == 0 || U_FAILURE(status) != 0) {
        return nullptr;
    }
    OpenConverter converter(::ucnv_open(name.c_str(), &status));
    return U_FAILURE(status) == 0 ? std::move(converter) : nullptr;
}

std::string convert(UConverter* converter, std::string_view bytes) {
    constexpr std::size_t kUnits = 4096;
    std::string text;
    Utf8::Utf16Joiner joiner(text);
    const char* source = bytes.data();
    const char* const end = source + bytes.size();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        UChar units[kUnits];
        UChar* target = units;
        status = U_ZERO_ERROR;
        ::ucnv_toUnicode(converter, &target, units + kUnits, &source, end, nullptr, 1, &status);
        std::for_each(units, target, [&](UChar unit) { joiner.add(unit); });
    }
    joiner.flush();
    return text;
}

} // namespace

std::optional<std::string> decoded(std::string_view bytes, std::string_view name) {
    return Decoder(name).decoded(bytes);
}

struct Decoder::Converter {
    OpenConverter open;
};

Decoder::Decoder(std::string_view name) {
    if (auto converter = converterNamed(name)) {
        m_converter = std::make_unique<Converter>(std::move(converter));
    }
}

Decoder::~Decoder() = default;
Decoder::Decoder(Decoder&& other) noexcept = default;
Decoder& Decoder::operator=(Decoder&& other) noexcept = default;

std::optional<std::string> Decoder::decoded(std::string_view bytes) {
    if (!m_converter) {
        return std::nullopt;
    }
    ::ucnv_resetToUnicode(m_converter->open.get());
    return convert(m_converter->open.get(), bytes);
}

} // namespace quillane::Charset
