#pragma once
#include <QAbstractButton>
#include <QVariantAnimation>

namespace quillane {

// Something that is on or off at once, without a button to confirm it. Give it the words of its row as
// accessible name; assistive tools meet it as a check box.
class Switch : public QAbstractButton {
    Q_OBJECT
  public:
    explicit Switch(const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override;

  private:
    void moveKnob(bool on);

    QVariantAnimation m_knob{this};
    double m_position = 0; // 0 at the left, off; 1 at the right, on
};

} // namespace quillane
