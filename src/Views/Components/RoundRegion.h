#pragma once
#include <QRegion>
#include <QSize>

namespace quillane {

// The pixels of a window of `size` inside corners of `radius`: its mask where the screen cannot blend it, as
// SystemLook tells. Such corners are round and jagged.
QRegion roundRegion(QSize size, double radius);

} // namespace quillane
