#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// What stands for the vendor in an identifier such as "com.example.tool": its first two parts, joined by a dot, empty
// parts not counted. Nothing when there are fewer. Takes comparable text, as Text::lowercased() gives it.
std::optional<std::string> vendorPrefix(std::string_view identifier);

} // namespace quillane
