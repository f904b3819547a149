#pragma once
#include "Components/Tint.h"
#include <QWidget>

namespace quillane {

// A rounded square in a soft tint with a symbol in the full tint. Decoration.
class Tile : public QWidget {
    Q_OBJECT
  public:
    // `symbolSide` 0 takes the usual share of the side.
    Tile(const QString& symbol, Tint tint, int side = 36, int symbolSide = 0, QWidget* parent = nullptr);

    void setSymbol(const QString& symbol, Tint tint);
    QString symbol() const { return m_symbol; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_symbol;
    Tint m_tint;
    int m_symbolSide;
};

} // namespace quillane
