#pragma once
#include "Components/Label.h"

namespace quillane {

// A path in as many lines as it takes, broken at words where it can be and anywhere else where it can't. `text()` is
// always the whole text; its menu copies it.
class PathLabel : public Label {
    Q_OBJECT
  public:
    explicit PathLabel(const TextStyle& style, QWidget* parent = nullptr);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace quillane
