#pragma once
#include "Clock.h"
#include <QVariantAnimation>
#include <QWidget>
#include <optional>

namespace quillane {

class AppLibrary;
class ElidedLabel;
class Label;
class LibraryObserver;
class ProgressBar;
class ProgressRing;

// The second stage of the review sheet: how far the sweep has come. It follows the library by itself.
class SweepRunningStage : public QWidget {
    Q_OBJECT
  public:
    // `total` rows will be worked; it is shown until the library has begun. The library outlives the stage.
    SweepRunningStage(AppLibrary& library, std::size_t total, QWidget* parent = nullptr);

    static constexpr int kMilliseconds = 180; // of the bar to a new value, as in the ring
    // The steps of ring and bar: fine enough for their pixels.
    static constexpr int kSteps = 1000;

    // Of what is done, 0 to 1; 0 when there is nothing to do.
    static double progressFraction(int processed, int total);

    ProgressRing* ring() const { return m_ring; }
    ProgressBar* bar() const { return m_bar; }
    Label* figure() const { return m_figure; }
    Label* caption() const { return m_caption; }
    Label* count() const { return m_count; }
    ElidedLabel* status() const { return m_status; }
    Label* promise() const { return m_promise; }
    bool isAnimating() const { return m_easing.state() == QAbstractAnimation::Running; }

  private:
    void render();
    void showFraction(double fraction);
    void easeBar(int steps);
    void announceProgress();

    AppLibrary& m_library;
    int m_total;
    bool m_hasBegun = false;
    ProgressRing* m_ring;
    Label* m_figure;
    Label* m_caption;
    ProgressBar* m_bar;
    Label* m_count;
    ElidedLabel* m_status;
    Label* m_promise;
    QVariantAnimation m_easing{this};
    std::optional<Instant> m_announcedAt;
    LibraryObserver* m_observer;
};

} // namespace quillane
