#pragma once
#include "AppUpdate.h"
#include <cstddef>
#include <optional>
#include <string_view>
#include <variant>

// The text that announces the newest version of this program. Its first line is a signature by Ed25519 in base64, 88
// characters, of all that follows the line's end, which is one object of JSON:
//
//   {"version": "1.2", "date": "2026-11-22T10:00:00Z", "page": "https://…", "notes": "…"}
//
// Dates are in UTC, to the second; notes may be missing, and what else the object holds is passed over. Nothing of a
// text is looked at before its signature. Any thread.
namespace quillane::UpdateFeed {

inline constexpr std::size_t kMostBytes = 65'536;
inline constexpr std::size_t kMostBytesOfPage = 1'000;
inline constexpr std::size_t kMostBytesOfNotes = 16'000;

enum class Fault {
    notSigned,  // by the holder of the key, or too large to be looked at
    unreadable, // signed, and yet no announcement
};

std::variant<AppUpdate, Fault> read(std::string_view text, std::string_view publicKey);

// What follows the signature; nothing when it is no announcement. Hostile for all it knows.
std::optional<AppUpdate> parse(std::string_view announcement);

} // namespace quillane::UpdateFeed
