#pragma once
#include "Bytes.h"
#include "SweepCategory.h"
#include <QVariantAnimation>
#include <QWidget>
#include <map>
#include <utility>
#include <vector>

namespace quillane {

// How a figure is made up, each category a stretch in its tint. Decoration: the rows below say the same in words.
// New parts are reached in 180 ms.
class CompositionBar : public QWidget {
    Q_OBJECT
  public:
    using Part = std::pair<SweepCategory, Bytes>;

    explicit CompositionBar(QWidget* parent = nullptr);

    // A category at most once; they stand in their declared order. Parts of no size are not drawn; without parts
    // the track stands empty.
    void setParts(std::vector<Part> parts);
    const std::vector<Part>& parts() const { return m_parts; }

    // A stretch as it is drawn now, in pixels.
    struct Stretch {
        SweepCategory category;
        double left;
        double length;
    };
    std::vector<Stretch> stretches() const;
    QAbstractAnimation& easing() { return m_easing; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    // What a category has of the bar.
    struct Weight {
        double share = 0;    // of what all have together; 0 to 1
        double presence = 0; // from 0, not there, to 1: how much of its gap and least width it takes
    };
    using Weights = std::map<SweepCategory, Weight>;

    static Weights weightsOf(const std::vector<Part>& parts);
    void easeTo(Weights weights);
    void showStep(double way);

    std::vector<Part> m_parts;
    Weights m_from;
    Weights m_shown;
    Weights m_to;
    QVariantAnimation m_easing{this};
};

} // namespace quillane
