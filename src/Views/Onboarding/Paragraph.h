#pragma once
#include "Components/Label.h"

namespace quillane {

// A few centred sentences, broken into lines at the width they get, with more air between the lines than a label
// leaves.
class Paragraph : public Label {
    Q_OBJECT
  public:
    // `lineHeight` is that of one line at the usual text size, in pixels; it grows with the text.
    Paragraph(const QString& text, const TextStyle& style, int lineHeight, QWidget* parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double lineHeight() const;

    int m_lineHeight;
};

} // namespace quillane
