#pragma once
#include "Components/ElidedLabel.h"

namespace quillane {

// One line that shrinks to fit, down to `smallest` pixels, and elides only after that.
class FittedLabel : public ElidedLabel {
    Q_OBJECT
  public:
    FittedLabel(const QString& text, const TextStyle& style, double smallest = 13, QWidget* parent = nullptr);

    // The size in pixels that the text is drawn in at its present width.
    double fittedSize() const;

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double m_smallest;
};

} // namespace quillane
