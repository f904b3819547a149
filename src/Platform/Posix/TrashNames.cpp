#include "TrashNames.h"
#include "FileURL.h"

namespace quillane::TrashNames {
namespace {

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

// A character has at most 3 bytes after its first. Bytes that belong to none are cut anywhere.
constexpr std::size_t kMostContinuations = 3;

std::string_view cut(std::string_view text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    std::size_t end = limit;
    while (end > 0 && limit - end < kMostContinuations && continuesCharacter(text[end])) {
        --end;
    }
    const bool isWhole = end > 0 && !continuesCharacter(text[end]);
    return text.substr(0, isWhole ? end : limit);
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
