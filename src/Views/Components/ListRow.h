#pragma once
#include "Components/Tint.h"
#include <QWidget>

namespace quillane {

class ElidedLabel;
class Label;
class SymbolView;

// A row of a short list in a detail pane: symbol, title over a second line, size at the right.
class ListRow : public QWidget {
    Q_OBJECT
  public:
    // The second line and the size take no room when empty. The second line is elided in the middle: it is
    // often a path.
    ListRow(const QString& symbol, const QString& title, const QString& subtitle, const QString& size,
            Tint tint = Tint::Secondary, QWidget* parent = nullptr);

    QString title() const;
    QString subtitle() const;
    QString sizeText() const;
    // What the symbol tells beyond the texts: its tooltip, and part of what assistive tools read.
    void setSymbolHelp(const QString& help);

  private:
    void speak();

    SymbolView* m_symbol;
    ElidedLabel* m_title;
    ElidedLabel* m_subtitle;
    Label* m_size;
};

} // namespace quillane
