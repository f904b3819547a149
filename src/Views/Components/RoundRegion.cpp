#include "Components/RoundRegion.h"
#include <algorithm>
#include <cmath>

namespace quillane {

QRegion roundRegion(QSize size, double radius) {
    radius = std::min({radius, size.width() / 2.0, size.height() / 2.0});
    const int rows = static_cast<int>(std::ceil(radius));
    QRegion region(0, rows, size.width(), size.height() - 2 * rows);
    for (int row = 0; row < rows; ++row) {
        const double up = radius - row - 0.5; // from the corner's centre to the middle of the row
        const int inset =
            static_cast<int>(std::lround(radius - std::sqrt(std::max(0.0, radius * radius - up * up))));
        for (const int y : {row, size.height() - 1 - row}) {
            region += QRect(inset, y, size.width() - 2 * inset, 1);
        }
    }
    return region;
}

} // namespace quillane
