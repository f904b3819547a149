#pragma once
#include <string>
#include <string_view>

namespace quillane::Text {

// A name that came from outside (a file, a bundle, a property list), fit to be shown in one line: valid
// UTF-8, in which control characters, line separators and characters that change the direction of the text
// stand as their code points ("‹U+202E›") and bytes that are no UTF-8 as U+FFFD. Without this, a name could
// show its end before its extension, or break the line it stands in. Everything else is kept, joiners
// included, since emoji and several scripts need them. For the eye only: never a path to open. Any thread.
std::string displayName(std::string_view name);

} // namespace quillane::Text
