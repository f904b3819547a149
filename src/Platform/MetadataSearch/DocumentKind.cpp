#include "DocumentKind.h"
#include <algorithm>
#include <string>

namespace quillane {
namespace {

struct NamedKind {
    std::string_view name;
    DocumentKind kind;
};

// The first that the type conforms to decides.
constexpr NamedKind kByType[] = {
    {"com.adobe.pdf", DocumentKind::pdf},
    {"public.html", DocumentKind::webPage},
    {"public.xhtml", DocumentKind::webPage},
    {"public.rtf", DocumentKind::richText},
    {"com.apple.mail.email", DocumentKind::message},
    {"com.apple.mail.emlx", DocumentKind::message},
    {"org.openxmlformats.openxml", DocumentKind::office},
    {"org.oasis-open.opendocument.text", DocumentKind::office},
    {"org.oasis-open.opendocument.text-template", DocumentKind::office},
    {"org.oasis-open.opendocument.spreadsheet", DocumentKind::office},
    {"org.oasis-open.opendocument.presentation", DocumentKind::office},
    {"org.oasis-open.opendocument.graphics", DocumentKind::office},
    {"org.idpf.epub-container", DocumentKind::office},
    {"public.text", DocumentKind::plainText},
};

constexpr NamedKind kByExtension[] = {
    {"md", DocumentKind::plainText},   {"markdown", DocumentKind::plainText},
    {"rst", DocumentKind::plainText},  {"adoc", DocumentKind::plainText},
    {"org", DocumentKind::plainText},  {"tex", DocumentKind::plainText},
    {"toml", DocumentKind::plainText}, {"ini", DocumentKind::plainText},
    {"cfg", DocumentKind::plainText},  {"conf", DocumentKind::plainText},
    {"sql", DocumentKind::plainText},  {"srt", DocumentKind::plainText},
    {"go", DocumentKind::plainText},   {"kt", DocumentKind::plainText},
    {"lua", DocumentKind::plainText},  {"jsx", DocumentKind::plainText},
    {"tsx", DocumentKind::plainText},  {"ots", DocumentKind::office},
    {"otp", DocumentKind::office},     {"xltm", DocumentKind::office},
    {"potm", DocumentKind::office},    {"ppsm", DocumentKind::office},
};

bool isWithoutCase(std::string_view text, std::string_view lower) {
    return std::ranges::equal(text, lower,
                              [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

} // namespace

DocumentKind documentKind(const ContentType& type, std::string_view extension) {
    if (type.is("public.data")) {
        const auto* const found = std::ranges::find_if(
            kByExtension, [&](const NamedKind& named) { return isWithoutCase(extension, named.name); });
        return found == std::end(kByExtension) ? DocumentKind::unknown : found->kind;
    }
    const auto* const found =
        std::ranges::find_if(kByType, [&](const NamedKind& named) { return type.conformsTo(named.name); });
    return found == std::end(kByType) ? DocumentKind::none : found->kind;
}

} // namespace quillane
