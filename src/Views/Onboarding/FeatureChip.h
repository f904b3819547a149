#pragma once
#include "Components/Label.h"
#include <QSequentialAnimationGroup>

namespace quillane {

// A capsule with a symbol and a word. When it comes it waits for its turn, then fades in and rises to its place.
class FeatureChip : public Label {
    Q_OBJECT
  public:
    // `delay` in seconds, from appear() to the first trace of it.
    FeatureChip(const QString& symbol, const QString& label, Tint tint, double delay,
                QWidget* parent = nullptr);

    static constexpr int kMilliseconds = 260;
    // Room below the capsule, from which it rises.
    static constexpr int kRise = 6;

    QString symbol() const { return m_symbol; }
    double delay() const { return m_delay; }
    // Whether it stands or is on its way.
    bool shown() const { return m_shown; }
    // 0 while nothing of it is seen, 1 when it stands.
    double progress() const { return m_progress; }

    // At once where nothing moves.
    void appear();
    void disappear();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void setProgress(double progress);

    QString m_symbol;
    double m_delay;
    bool m_shown = false;
    double m_progress = 0;
    QSequentialAnimationGroup m_entrance{this};
};

} // namespace quillane
