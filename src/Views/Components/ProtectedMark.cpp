#include "Components/ProtectedMark.h"

namespace quillane {

ProtectedMark::ProtectedMark(int side, QWidget* parent)
    : SymbolView(symbolName(), side, Tint::Green, parent) {
    setToolTip(helpText());
    setAccessibleName(helpText());
}

QString ProtectedMark::symbolName() {
    return QStringLiteral("shield.fill");
}

QString ProtectedMark::helpText() {
    return QStringLiteral("Protected - Quillane will never remove this");
}

} // namespace quillane
