#pragma once
#include <string_view>

// The keys of everything that survives a restart. They are settled as they stand.
namespace quillane::DefaultsKeys {

inline constexpr std::string_view kProtectedPaths = "protectedPaths";     // sorted array of strings
inline constexpr std::string_view kLastOperation = "lastOperation";       // data: JSON of UndoableOperation
inline constexpr std::string_view kShowMenuBarExtra = "showMenuBarExtra"; // boolean

} // namespace quillane::DefaultsKeys
