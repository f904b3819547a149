#pragma once
#include <QWidget>

namespace quillane {

// The program's mark, large. Decoration.
class BrandMark : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kSide = 92;

    explicit BrandMark(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillane
