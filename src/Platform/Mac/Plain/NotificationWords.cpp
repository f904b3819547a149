#include "NotificationWords.h"
#include "DisplayName.h"

namespace quillane::NotificationWords {
namespace {

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

} // namespace

std::string shown(const std::string& text) {
    auto words = Text::displayName(text);
    std::size_t characters = 0;
    std::size_t endOfShort = 0; // behind the last but one that may stand
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (!beginsCharacter(words[at])) {
            continue;
        }
        if (characters + 1 == kMost) {
            endOfShort = at;
        }
        if (++characters > kMost) {
            return words.substr(0, endOfShort) + "…";
        }
    }
    return words;
}

} // namespace quillane::NotificationWords
