#pragma once
#include <array>
#include <optional>
#include <string_view>

namespace quillane {

// The sections of the window, in the order of the sidebar.
enum class LibrarySection { overview, applications, orphans, developer, files, duplicates, startup };

inline constexpr std::array kAllLibrarySections = {LibrarySection::overview, LibrarySection::applications,
                                                   LibrarySection::orphans,  LibrarySection::developer,
                                                   LibrarySection::files,    LibrarySection::duplicates,
                                                   LibrarySection::startup};

// The title, such as "Orphaned Files".
std::string_view rawValue(LibrarySection section);
std::optional<LibrarySection> librarySectionFromRawValue(std::string_view text);
// The name of the section's symbol image.
std::string_view symbol(LibrarySection section);

} // namespace quillane
