#pragma once
#include <QVariantAnimation>
#include <QWidget>

namespace quillane {

// Tells at a glance how something ended. It grows and fades in once, when it is first shown.
class ResultMark : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kSide = 68;
    static constexpr int kMilliseconds = 220;

    explicit ResultMark(bool succeeded, QWidget* parent = nullptr);

    bool succeeded() const { return m_succeeded; }
    // "checkmark" or "exclamationmark".
    QString symbol() const;
    bool isAnimating() const { return m_entrance.state() == QAbstractAnimation::Running; }

    QSize sizeHint() const override { return {kSide, kSide}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    bool m_succeeded;
    bool m_hasEntered = false;
    double m_shown = 1; // 0 to 1: how far the entrance has come
    QVariantAnimation m_entrance{this};
};

} // namespace quillane
