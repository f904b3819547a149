#pragma once
#include <QWidget>

namespace quillane {

// Dims a window while a sheet stands over it: covers `window` whole, whatever size it takes. Decoration.
class Scrim : public QWidget {
    Q_OBJECT
  public:
    explicit Scrim(QWidget* window);

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace quillane
