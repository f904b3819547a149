#pragma once
#include "PictureFit.h"
#include "Workspace.h"
#include <QIODevice>
#include <optional>
#include <string_view>

// Pictures of any size, out of files that nobody vouches for. Any thread; no window system is needed.
namespace quillane::ImageDecoder {

// What a picture may take in memory while it is decoded, a second time for being scaled: 128 MB, in the unit that
// Qt's readers have.
inline constexpr int kMostMegabytes = 128;
// An SVG beyond this is not drawn.
inline constexpr qint64 kMostSvgBytes = qint64{1} << 20U;

// Sets the limit for all readers of the process. Before other threads run.
void limitMemory();

// The picture in the device, its first frame and turned as the camera was held. `head` are its first bytes, at most
// PictureHead::kMostBytes, and decide the form. Never larger than the picture is, but for drawings, which have no
// pixels. Nothing for what is damaged beyond use, has no reader here, or takes more memory than is allowed.
std::optional<IconImage> decoded(QIODevice& device, std::string_view head, PixelSize wanted, Fit fit);

// The same picture, smaller where it is larger than it should be.
IconImage shrunk(IconImage picture, PixelSize wanted, Fit fit);

} // namespace quillane::ImageDecoder
