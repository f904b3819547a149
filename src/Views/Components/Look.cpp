#include "Components/Look.h"
#include "Components/Accessibles.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Style/QuillaneStyle.h"
#include "Components/SystemLook.h"
#include "Components/Tokens.h"
#include <QApplication>
#include <QFontDatabase>
#include <QToolTip>
#include <cmath>

namespace quillane {

namespace {

bool g_highContrast = false;
bool g_reducedMotion = false;

constexpr int kBodyPixels = 13;

void apply(bool dark) {
    Tokens::preferHighContrast(g_highContrast);
    const QPalette palette = Tokens::of(dark, g_highContrast).palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

QFont bodyFont() {
    QFont font = QApplication::font();
    const QString preferred = QStringLiteral("Inter");
    if (QFontDatabase::families().contains(preferred)) {
        font = QFont(preferred);
    }
    font.setPixelSize(static_cast<int>(std::lround(kBodyPixels * Fonts::scale())));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

void applyFonts() {
    QApplication::setFont(bodyFont());
    QToolTip::setFont(Fonts::of(12));
}

} // namespace

void Look::install(QApplication& app) {
    installAccessibles();
    if (SystemLook::isNative()) {
        return;
    }
    QApplication::setStyle(new QuillaneStyle);
    applyFonts();
    apply(false);
    new FocusRing(&app);
}

void Look::setDark(bool dark) {
    if (!SystemLook::isNative() && dark != isDark()) {
        apply(dark);
    }
}

bool Look::isDark() {
    return Tokens::current().dark;
}

void Look::setTextScale(double factor) {
    if (!SystemLook::isNative()) {
        Fonts::setScale(factor);
        applyFonts();
    }
}

void Look::setHighContrast(bool on) {
    g_highContrast = on;
    if (SystemLook::isNative()) {
        Tokens::preferHighContrast(on);
    } else {
        apply(isDark());
    }
}

void Look::setReducedMotion(bool on) {
    g_reducedMotion = on;
}

bool Look::reducedMotion() {
    return g_reducedMotion;
}

int Look::duration(int milliseconds) {
    return g_reducedMotion ? 0 : milliseconds;
}

} // namespace quillane
