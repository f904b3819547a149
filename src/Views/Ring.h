#pragma once
#include <QProgressBar>

namespace quillane {

// A ring that fills clockwise from the top, round a symbol. Value and range are those of QProgressBar, so
// assistive tools read them. Give it an accessible name.
class Ring : public QProgressBar {
    Q_OBJECT
  public:
    static constexpr int kSide = 118;

    explicit Ring(const QString& symbol, QWidget* parent = nullptr);

    QString symbol() const { return m_symbol; }
    QSize sizeHint() const override { return {kSide, kSide}; }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_symbol;
};

} // namespace quillane
