#pragma once
#include "Workspace.h"
#include <QImage>
#include <optional>
#include <string_view>

// Pictures in memory. Any thread; no window system is needed.
namespace quillane::Pictures {

// The largest side of a picture that is decoded, in pixels.
inline constexpr int kMostSide = 1024;

IconImage fromImage(const QImage& image);
// Nothing for what is damaged, no picture of this form, or larger than kMostSide. `form` is a name of Qt's
// image readers such as "png"; nothing either where there is no such reader.
std::optional<IconImage> decoded(std::string_view bytes, const char* form);

// What stands for things without an icon of their own.
enum class Generic { application, document, folder };
// Drawn by ourselves, `side` pixels square (16 to kMostSide), in greys that sit on light and dark alike.
IconImage drawn(Generic generic, int side);

} // namespace quillane::Pictures
