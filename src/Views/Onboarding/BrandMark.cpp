#include "Onboarding/BrandMark.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QPainter>

namespace quillane {

BrandMark::BrandMark(QWidget* parent)
    : QWidget(parent) {
    setFixedSize(kSide, kSide);
}

void BrandMark::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Symbols::draw(painter, {}, kSide, QStringLiteral("BrandMark"), Tokens::current().link);
}

} // namespace quillane
