#pragma once
#include "FileURL.h"
#include "Platform.h"
#include <string>
#include <string_view>
#include <vector>

// Where applications put things.
namespace quillane::SupportFileLocations {

struct Location {
    FileURL url;
    std::string category;         // the word shown to the user
    bool allowsNameMatch = false; // an entry named like the application itself counts as a match here
    bool isCache = false;         // the entries are regenerable
    friend bool operator==(const Location&, const Location&) = default;
};

// The table, built anew from the home folder: 21 rows, those of the home folder first. Any thread.
std::vector<Location> all(const Platform& platform);

// The bundle identifiers that an entry of this name may stand for, most literal first; never empty.
std::vector<std::string> identifierCandidates(std::string_view name);

} // namespace quillane::SupportFileLocations
