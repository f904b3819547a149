#include "Components/SymbolButton.h"
#include <algorithm>

namespace quillane {

namespace {
constexpr int kLeastSide = 26; // a smaller one is hard to hit
}

SymbolButton::SymbolButton(const QString& symbol, const QString& name, Role role, int side, QWidget* parent)
    : PushButton(name, symbol, role, Size::Regular, parent)
    , m_side(std::max(side, kLeastSide)) {
    setCompact(true);
    setIconSize(m_side < 30 ? QSize(13, 13) : QSize(15, 15));
}

QSize SymbolButton::sizeHint() const {
    return {m_side, std::max(kLeastSide, std::min(m_side, 32))};
}

} // namespace quillane
