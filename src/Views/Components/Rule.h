#pragma once
#include <QWidget>

namespace quillane {

// A line of one pixel between columns or rows.
class Rule : public QWidget {
    Q_OBJECT
  public:
    enum class Weight { Edge, Row }; // edge of a column or bar; between rows of a card
    explicit Rule(Weight weight = Weight::Edge, Qt::Orientation orientation = Qt::Horizontal,
                  QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Weight m_weight;
};

} // namespace quillane
