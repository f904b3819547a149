#pragma once
#include "Components/SymbolView.h"

namespace quillane {

// The shield that tells that something is on the list of what stays.
class ProtectedMark : public SymbolView {
    Q_OBJECT
  public:
    explicit ProtectedMark(int side = 15, QWidget* parent = nullptr);

    static QString symbolName();
    // Tooltip and accessible name; table cells show the same.
    static QString helpText();
};

} // namespace quillane
