#pragma once
#include "Components/Label.h"

namespace quillane {

// One line that gives way when space is short and then shows its whole text as tooltip. `text()` is always
// the whole text.
class ElidedLabel : public Label {
    Q_OBJECT
  public:
    explicit ElidedLabel(const QString& text = {}, const TextStyle& style = TextStyle::body(),
                         Qt::TextElideMode mode = Qt::ElideRight, QWidget* parent = nullptr);

    bool isElided() const;

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    Qt::TextElideMode m_mode;
};

} // namespace quillane
