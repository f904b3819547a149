#pragma once
#include <QObject>

namespace quillane {

// Tells that text has another size from now on. Fonts::follow listens.
class ScaleNotifier : public QObject {
    Q_OBJECT
  signals:
    void changed();
};

} // namespace quillane
