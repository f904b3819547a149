#pragma once
#include "DuplicateGroup.h"
#include <optional>
#include <vector>

namespace quillane {

class AppLibrary;

// What table, menu and panes ask of the copies in a group. Main thread only.
namespace Copies {

// Of all groups, in their order.
std::vector<FileURL> urlsOf(const std::vector<DuplicateGroup>& groups);
// The copy that would stay: `keeper` while the group has it, else the suggested one. Nothing without files.
std::optional<FileURL> chosenOf(const DuplicateGroup& group, const std::optional<FileURL>& keeper);
// Whether a removal would take any of them: those beside the one that stays may all be protected. Reads the library
// and is observed.
bool anyCanGo(const AppLibrary& library, const DuplicateGroup& group, const std::optional<FileURL>& keeper);
// The same for several groups, of which the suggested copies stay.
bool anyCanGo(const AppLibrary& library, const std::vector<DuplicateGroup>& groups);

} // namespace Copies
} // namespace quillane
