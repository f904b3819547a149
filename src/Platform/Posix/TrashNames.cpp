#include "TrashNames.h"
#include "FileURL.h"

namespace quillane::TrashNames {
namespace {

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string_view cut(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    while (limit > 0 && continuesCharacter(text[limit])) {
        --limit;
    }
    return text.substr(0, limit);
}

} // namespace

std::string candidate(std::string_view name, int attempt, std::size_t limit) {
    const auto extension = pathExtensionOf(name);
    std::string suffix = attempt == 0 ? "" : " " + std::to_string(attempt + 1);
    std::string_view stem = name;
    if (!extension.empty() && suffix.size() + extension.size() + 1 < limit) {
        stem.remove_suffix(extension.size() + 1);
        suffix += ".";
        suffix += extension;
    }
    return std::string(cut(stem, limit - suffix.size())) + suffix;
}

} // namespace quillane::TrashNames
