#pragma once
#include "Components/Badge.h"

namespace quillane {

// The word "PERMANENT" in a small capsule: it marks whatever cannot come back.
class PermanentBadge : public Badge {
    Q_OBJECT
  public:
    explicit PermanentBadge(QWidget* parent = nullptr);

    // The same mark for delegates: at `left`, centred on the height `middle`.
    static void draw(QPainter& painter, double left, double middle);
};

} // namespace quillane
