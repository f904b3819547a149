#include "Components/Tokens.h"
#include <QApplication>

namespace quillane {

namespace {

constexpr double kTileShare = 0.13; // of a tint in its tile's ground

QColor see(const char* name, double alpha) {
    return faded(QColor(QLatin1String(name)), alpha);
}

Tokens makeLight() {
    Tokens t;
    t.page = "#F6F6F8";
    t.base = "#FFFFFF";
    t.alt = "#F8F8FA";
    t.sidebar = "#ECECF0";
    t.card = "#FFFFFF";
    t.line = "#DEDEE4";
    t.line2 = "#EBEBEF";
    t.text = "#1B1B1F";
    t.text2 = "#54545E";
    t.text3 = "#62626C";
    t.accent = "#3457D5";
    t.accentHover = "#2C4CC0";
    t.link = "#2E4EC4";
    t.sel = "#3457D5";
    t.selIdle = "#E2E2E8";
    t.side = see("#1B1B1F", 0.085);
    t.fill = see("#1B1B1F", 0.06);
    t.ctl = "#FFFFFF";
    t.ctlLine = "#CBCBD3";
    t.ring = see("#3457D5", 0.80);
    t.switchOff = "#8B8B95";
    t.orange = "#904003";
    t.orangeSoft = see("#E88C10", 0.15);
    t.red = "#B5231A";
    t.redSoft = see("#C8281E", 0.10);
    t.green = "#166E36";
    t.greenSoft = see("#19803E", 0.12);
    t.permanent = "#B5231A";
    t.heroTop = "#FFFFFF";
    t.heroBottom = "#F1F4FF";
    t.scrim = see("#14141C", 0.32);
    t.shadow = see("#14141E", 0.045);
    t.caches = "#3457D5";
    t.developer = "#0D7377";
    t.orphans = "#904003";
    t.trash = "#B5231A";
    t.apps = "#1A64A8";
    t.files = "#7A3FC4";
    t.startup = "#9A2F77";
    return t;
}

Tokens makeDark() {
    Tokens t;
    t.dark = true;
    t.page = "#1A1A1D";
    t.base = "#1D1D20";
    t.alt = "#222226";
    t.sidebar = "#242428";
    t.card = "#26262A";
    t.line = "#3A3A41";
    t.line2 = "#303036";
    t.text = "#F1F1F4";
    t.text2 = "#B6B6C0";
    t.text3 = "#A5A5B0";
    t.accent = "#4A69E3";
    t.accentHover = "#4160DA";
    t.link = "#A3B5FF";
    t.sel = "#3F5CD0";
    t.selIdle = "#3B3B43";
    t.side = see("#FFFFFF", 0.10);
    t.fill = see("#FFFFFF", 0.08);
    t.ctl = "#35353B";
    t.ctlLine = "#4A4A52";
    t.ring = see("#96AAFF", 0.70);
    t.switchOff = "#65656E";
    t.orange = "#FFB266";
    t.orangeSoft = see("#FFA046", 0.16);
    t.red = "#FF8A82";
    t.redSoft = see("#FF645A", 0.16);
    t.green = "#6BD68B";
    t.greenSoft = see("#5AD282", 0.15);
    t.permanent = "#B5231A";
    t.heroTop = "#292A31";
    t.heroBottom = "#26283A";
    t.scrim = see("#000000", 0.50);
    t.shadow = QColor(Qt::transparent);
    t.caches = "#A3B5FF";
    t.developer = "#5CCFD3";
    t.orphans = "#FFB266";
    t.trash = "#FF8A82";
    t.apps = "#7CC0FF";
    t.files = "#C6A4FF";
    t.startup = "#F29AD2";
    return t;
}

Tokens withHighContrast(Tokens t) {
    t.highContrast = true;
    t.line = t.text3;
    t.line2 = t.text3;
    t.ctlLine = t.text2;
    return t;
}

bool g_highContrast = false;

} // namespace

QColor faded(QColor color, double factor) {
    color.setAlphaF(static_cast<float>(color.alphaF() * factor));
    return color;
}

const Tokens& Tokens::light() {
    static const Tokens tokens = makeLight();
    return tokens;
}

const Tokens& Tokens::darkSet() {
    static const Tokens tokens = makeDark();
    return tokens;
}

const Tokens& Tokens::of(bool dark, bool highContrast) {
    static const Tokens strongLight = withHighContrast(light());
    static const Tokens strongDark = withHighContrast(darkSet());
    if (highContrast) {
        return dark ? strongDark : strongLight;
    }
    return dark ? darkSet() : light();
}

const Tokens& Tokens::current() {
    const QPalette palette = QApplication::palette();
    const float text = palette.color(QPalette::Active, QPalette::WindowText).lightnessF();
    const float window = palette.color(QPalette::Active, QPalette::Window).lightnessF();
    return of(text > window, g_highContrast);
}

void Tokens::preferHighContrast(bool on) {
    g_highContrast = on;
}

QColor Tokens::tint(Tint tint) const {
    switch (tint) {
    case Tint::Text:
        return text;
    case Tint::Secondary:
        return text2;
    case Tint::Tertiary:
        return text3;
    case Tint::Link:
        return link;
    case Tint::White:
        return Qt::white;
    case Tint::Orange:
        return orange;
    case Tint::Red:
        return red;
    case Tint::Green:
        return green;
    case Tint::Caches:
        return caches;
    case Tint::Developer:
        return developer;
    case Tint::Orphans:
        return orphans;
    case Tint::Trash:
        return trash;
    case Tint::Apps:
        return apps;
    case Tint::Files:
        return files;
    case Tint::Startup:
        return startup;
    }
    return text;
}

QColor Tokens::soft(Tint which) const {
    switch (which) {
    case Tint::Orange:
        return orangeSoft;
    case Tint::Red:
        return redSoft;
    case Tint::Green:
        return greenSoft;
    case Tint::Text:
    case Tint::Secondary:
    case Tint::Tertiary:
    case Tint::White:
        return fill;
    default:
        return faded(tint(which), kTileShare);
    }
}

QPalette Tokens::palette() const {
    QPalette p;
    const auto set = [&p](QPalette::ColorRole role, const QColor& color) { p.setColor(role, color); };
    set(QPalette::Window, page);
    set(QPalette::WindowText, text);
    set(QPalette::Base, base);
    set(QPalette::AlternateBase, alt);
    set(QPalette::Text, text);
    set(QPalette::Button, ctl);
    set(QPalette::ButtonText, text);
    set(QPalette::BrightText, Qt::white);
    set(QPalette::PlaceholderText, text3);
    set(QPalette::Highlight, sel);
    set(QPalette::HighlightedText, Qt::white);
    set(QPalette::Link, link);
    set(QPalette::LinkVisited, link);
    set(QPalette::Light, card);
    set(QPalette::Midlight, line2);
    set(QPalette::Mid, line);
    set(QPalette::Dark, ctlLine);
    set(QPalette::Shadow, dark ? QColor(Qt::black) : text3);
    set(QPalette::ToolTipBase, card);
    set(QPalette::ToolTipText, text);
    p.setColor(QPalette::Inactive, QPalette::Highlight, selIdle);
    p.setColor(QPalette::Inactive, QPalette::HighlightedText, text);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText}) {
        p.setColor(QPalette::Disabled, role, faded(text, 0.45));
    }
    p.setColor(QPalette::Disabled, QPalette::Highlight, selIdle);
    p.setColor(QPalette::Disabled, QPalette::HighlightedText, text2);
    return p;
}

} // namespace quillane
