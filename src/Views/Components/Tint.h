#pragma once

namespace quillane {

// What a text, a symbol or a mark is coloured for. A tint is resolved to a colour while painting, so that it
// follows a switch between light and dark; see Tokens::tint.
enum class Tint {
    Text,
    Secondary,
    Tertiary, // prompts and quiet marks
    Link,     // the accent, as text or symbol
    White,    // on the accent
    Orange,   // stale, problems, access
    Red,      // destructive, permanent, broken
    Green,    // fine, in the sweep, protected
    Caches,
    Developer,
    Orphans,
    Trash,
    Apps,
    Files,
    Startup,
};

} // namespace quillane
