#pragma once
#include <QSpinBox>

namespace quillane {

// A figure of a few, changed step by step or typed. What is typed counts once it is done: Return, or leaving the
// field; Escape takes it back. The wheel goes to whatever scrolls round it.
class Stepper : public QSpinBox {
    Q_OBJECT
  public:
    // `name` is what assistive tools call it. Before and behind the figure stand `prefix` and `suffix`.
    Stepper(const QString& name, int least, int most, const QString& prefix, const QString& suffix,
            QWidget* parent = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    bool isBeingTyped() const;
};

} // namespace quillane
