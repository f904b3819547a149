#pragma once
#include "Components/PushButton.h"

namespace quillane {

// A button that is only a symbol. Its name is its tooltip and its accessible name.
class SymbolButton : public PushButton {
    Q_OBJECT
  public:
    // Never smaller than 26 pixels.
    SymbolButton(const QString& symbol, const QString& name, Role role = Role::Plain, int side = 26,
                 QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  private:
    int m_side;
};

} // namespace quillane
