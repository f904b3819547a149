#pragma once
#include "DisplayName.h"
#include <QString>
#include <string_view>

namespace quillane {

// Words of our own, which are UTF-8.
inline QString words(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A name from outside, with what would deceive the eye made visible. Everything that a file, a bundle or a
// property list says goes through here on its way to the screen.
inline QString shownName(std::string_view name) {
    return words(Text::displayName(name));
}

} // namespace quillane
