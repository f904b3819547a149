#pragma once
#include "Components/Tint.h"
#include <QWidget>

namespace quillane {

class ElidedLabel;
class Label;

// One line of a list of figures: symbol, title, and the figure at the right.
class FigureRow : public QWidget {
    Q_OBJECT
  public:
    FigureRow(const QString& symbol, const QString& title, Tint tint = Tint::Secondary,
              QWidget* parent = nullptr);

    QString symbol() const { return m_symbol; }
    QString title() const;
    QString figure() const;
    // As it is to be read; none for empty.
    void setFigure(const QString& figure);

  private:
    void speak();

    QString m_symbol;
    ElidedLabel* m_title;
    Label* m_figure;
};

} // namespace quillane
