#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// Whether a link in the last component is followed. Links before it always are.
enum class LastLink { follow, keep };

// The path, inside the volume that begins at `folder`, to which `path` leads: every link resolved, ".." never
// going above the volume's root, absolute links beginning there. Nothing, with errno set, when a component is
// missing or can't be reached, or at more than 40 links. The names are looked up one after the other, so what
// a rename does meanwhile can show.
std::optional<std::string> resolveBelow(const std::string& folder, std::string_view path, LastLink lastLink);

// Repeated slashes, "." and ".." removed as text; ".." at the root stays there. Absolute in, absolute out.
std::string lexicallyNormal(std::string_view path);

} // namespace quillane
