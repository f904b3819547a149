#include "Components/Fonts.h"
#include "Components/ScaleNotifier.h"
#include "Components/TextStyle.h"
#include <QApplication>
#include <QFontMetrics>
#include <algorithm>
#include <cmath>

namespace quillane {

namespace {

double g_scale = 1;

ScaleNotifier& notifier() {
    static ScaleNotifier one;
    return one;
}

} // namespace

QFont Fonts::of(double px, int weight, double tracking) {
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(std::nearbyint(px * g_scale)));
    font.setWeight(static_cast<QFont::Weight>(weight));
    if (tracking != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    }
    return font;
}

double Fonts::scale() {
    return g_scale;
}

void Fonts::setScale(double factor) {
    const double scale = std::clamp(factor, 0.5, 4.0);
    if (scale != g_scale) {
        g_scale = scale;
        emit notifier().changed();
    }
}

void Fonts::follow(QObject* context, const std::function<void()>& adjust) {
    adjust();
    QObject::connect(&notifier(), &ScaleNotifier::changed, context, adjust);
}

int Fonts::rowHeight(int base, double px, int air) {
    return g_scale <= 1 ? base : std::max(base, QFontMetrics(of(px)).height() + air);
}

QFont TextStyle::font() const {
    return Fonts::of(px, weight, tracking);
}

} // namespace quillane
