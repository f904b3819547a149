#pragma once
#include "Components/Tint.h"
#include <QWidget>

namespace quillane {

// A symbol of fixed side. Decoration: it has no accessible name unless the caller gives it one.
class SymbolView : public QWidget {
    Q_OBJECT
  public:
    SymbolView(const QString& symbol, int side, Tint tint = Tint::Secondary, QWidget* parent = nullptr);

    QString symbol() const { return m_symbol; }
    Tint tint() const { return m_tint; }
    void setSymbol(const QString& symbol, Tint tint);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_symbol;
    Tint m_tint;
};

} // namespace quillane
