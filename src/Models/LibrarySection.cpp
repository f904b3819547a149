#include "LibrarySection.h"

namespace quillane {

std::string_view rawValue(LibrarySection section) {
    switch (section) {
    case LibrarySection::overview:
        return "Overview";
    case LibrarySection::applications:
        return "Applications";
    case LibrarySection::orphans:
        return "Orphaned Files";
    case LibrarySection::developer:
        return "Developer";
    case LibrarySection::files:
        return "Files";
    case LibrarySection::duplicates:
        return "Duplicates";
    case LibrarySection::startup:
        return "Startup";
    }
    __builtin_unreachable();
}

std::string_view symbol(LibrarySection section) {
    switch (section) {
    case LibrarySection::overview:
        return "sparkles";
    case LibrarySection::applications:
        return "square.grid.2x2";
    case LibrarySection::orphans:
        return "questionmark.folder";
    case LibrarySection::developer:
        return "hammer";
    case LibrarySection::files:
        return "doc.on.doc";
    case LibrarySection::duplicates:
        return "doc.on.doc.fill";
    case LibrarySection::startup:
        return "power";
    }
    __builtin_unreachable();
}

std::optional<LibrarySection> librarySectionFromRawValue(std::string_view text) {
    for (const auto section : kAllLibrarySections) {
        if (rawValue(section) == text) {
            return section;
        }
    }
    return std::nullopt;
}

} // namespace quillane
