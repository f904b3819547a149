#pragma once
#include <QProgressBar>
#include <QVariantAnimation>

namespace quillane {

// Progress as a ring of 118 pixels with a symbol inside, from 12 o'clock clockwise. Value and range are those
// of QProgressBar; a new value is reached in 180 ms. Give it an accessible name.
class ProgressRing : public QProgressBar {
    Q_OBJECT
  public:
    explicit ProgressRing(const QString& symbol, QWidget* parent = nullptr);

    QSize sizeHint() const override { return size(); }
    // The share of the ring that is filled now, 0 to 1.
    double shownShare() const { return m_shown; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void easeToValue();

    QString m_symbol;
    QVariantAnimation m_ease{this};
    double m_shown = 0;
};

} // namespace quillane
