#pragma once
#include <QPixmap>
#include <QSequentialAnimationGroup>
#include <QWidget>

class QVariantAnimation;

namespace quillane {

// The place of a card in a column of cards, with the gap above it. A card that goes is gone at once for
// keyboard, mouse and assistive tools; what fades and closes up is its picture. A card that comes stands at
// once.
class CardSlot : public QWidget {
    Q_OBJECT
  public:
    // The card becomes a child. It is hidden until setShown.
    CardSlot(QWidget* card, int gap, QWidget* parent = nullptr);

    static constexpr int kFadeMilliseconds = 150;
    static constexpr int kCloseMilliseconds = 180;

    void setShown(bool shown);
    // Runs from the moment a card that was seen goes until the column has closed up.
    QAbstractAnimation& departure() { return m_departure; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QVariantAnimation* addStep(int milliseconds);
    void depart();
    void close();
    void release(); // the height is that of the card again

    QWidget* m_card;
    const int m_gap;
    QPixmap m_picture; // of the card that goes; null else
    double m_opacity = 0;
    int m_fullHeight = 0; // from which it closes up
    QSequentialAnimationGroup m_departure{this};
};

} // namespace quillane
