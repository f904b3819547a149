#pragma once
#include <cstddef>
#include <string_view>

// How the picture of a screen is known, by marks that only a tool for such pictures leaves.
namespace quillane::ScreenCapture {

// The extended attribute that the Mac's own tool sets, and the bytes of it that are looked at.
inline constexpr const char* kAttribute = "com.apple.metadata:kMDItemIsScreenCapture";
inline constexpr std::size_t kLongestAttribute = 1024;
// Whether its value, a property list, is true.
bool isAttributeTrue(std::string_view value);

// How much of the start of a PNG is looked at: tools write their mark before the picture.
inline constexpr std::size_t kHead = 4096;
// Whether the start of a PNG names a desktop's tool as its software. Names of files are no mark: anybody may
// give them, in any language.
bool isMarkedPng(std::string_view head);

} // namespace quillane::ScreenCapture
