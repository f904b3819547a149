#pragma once
#include <QBasicTimer>
#include <QWidget>

class QPainter;
class QRectF;

namespace quillane {

// Tells that work goes on and that nobody knows how long. Moves only while it can be seen, so a hidden one
// costs nothing; with reduced motion it stands still.
class Spinner : public QWidget {
    Q_OBJECT
  public:
    explicit Spinner(int side = 16, QWidget* parent = nullptr);

    bool isAnimating() const { return m_timer.isActive(); }

    static constexpr int kSteps = 24;
    static constexpr int kStepMilliseconds = 42; // one turn a second
    static void draw(QPainter& painter, const QRectF& rect, int step, const QColor& color);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    QBasicTimer m_timer;
    int m_step = 0;
};

} // namespace quillane
