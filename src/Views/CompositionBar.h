#pragma once
#include "Bytes.h"
#include "SweepCategory.h"
#include <QWidget>
#include <utility>
#include <vector>

namespace quillane {

// How a figure is made up, each category a stretch in its tint. Decoration: the rows below say the same in words.
class CompositionBar : public QWidget {
    Q_OBJECT
  public:
    using Part = std::pair<SweepCategory, Bytes>;

    explicit CompositionBar(QWidget* parent = nullptr);

    // From left to right. Parts of no size are not drawn; without parts the track stands empty.
    void setParts(std::vector<Part> parts);
    const std::vector<Part>& parts() const { return m_parts; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::vector<Part> m_parts;
};

} // namespace quillane
