#pragma once
#include "Components/Tint.h"
#include <QWidget>

namespace quillane {

class Label;
class SymbolView;

// A sentence or two on a soft ground, with a symbol at its first line.
class Note : public QWidget {
    Q_OBJECT
  public:
    // Tint::Secondary gives the neutral ground.
    Note(const QString& symbol, const QString& text, Tint tint = Tint::Secondary, QWidget* parent = nullptr);

    QString text() const;
    void setContent(const QString& symbol, const QString& text, Tint tint);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SymbolView* m_symbol;
    Label* m_text;
    Tint m_tint;
};

} // namespace quillane
