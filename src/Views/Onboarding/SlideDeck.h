#pragma once
#include <QPixmap>
#include <QStackedWidget>
#include <QVariantAnimation>

namespace quillane {

class SlideView;

// The pages of the welcome, one of which is seen. The one that comes slides in and fades in from where the reader
// is going, and a picture of the one that leaves goes the other way. The new page is there at once for everything
// but the eye.
class SlideDeck : public QStackedWidget {
    Q_OBJECT
  public:
    explicit SlideDeck(QWidget* parent = nullptr);

    static constexpr int kMilliseconds = 260;
    static constexpr int kTravel = 24;

    SlideView* slide(int page) const; // null for none
    void turnTo(int page, bool forward);
    // Runs while a page is turned.
    QAbstractAnimation& turning() { return m_turning; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void leaveBehind();
    void place(double progress);
    void settle();

    QVariantAnimation m_turning{this};
    QPixmap m_leaving;   // of the page before; null at rest
    int m_leavingX = 0;  // where it stood when it began to leave
    int m_direction = 1; // 1 when the reader goes forward, else -1
};

} // namespace quillane
