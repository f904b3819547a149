#pragma once
#include "Components/Tint.h"
#include <QFont>

namespace quillane {

// Size, weight and colour of a label. The named ones are all that the window uses.
struct TextStyle {
    double px = 13;
    int weight = QFont::Normal;
    Tint tint = Tint::Text;
    double tracking = 0;

    TextStyle tinted(Tint other) const { return {px, weight, other, tracking}; }
    QFont font() const;

    static constexpr TextStyle caption();       // 11, secondary
    static constexpr TextStyle overline();      // 11 600 with air between letters, for words in capitals
    static constexpr TextStyle statLabel();     // 11.5, secondary
    static constexpr TextStyle secondary();     // 12, secondary
    static constexpr TextStyle note();          // 12, primary
    static constexpr TextStyle row();           // 12.5, primary
    static constexpr TextStyle body();          // 13
    static constexpr TextStyle bodySecondary(); // 13, secondary
    static constexpr TextStyle heading();       // 13 600: heads of cards, banners and groups
    static constexpr TextStyle columnTitle();   // 15 600: titles of columns, figures of rows
    static constexpr TextStyle detailTitle();   // 17 600: titles of detail panes, values of statistics
    static constexpr TextStyle welcomeTitle();  // 26 700
    static constexpr TextStyle welcomeBody();   // 14, secondary
    static constexpr TextStyle figure();        // 40 700: sheets
    static constexpr TextStyle heroFigure();    // 50 700
};

constexpr TextStyle TextStyle::caption() {
    return {11, QFont::Normal, Tint::Secondary, 0};
}
constexpr TextStyle TextStyle::overline() {
    return {11, QFont::DemiBold, Tint::Secondary, 0.55};
}
constexpr TextStyle TextStyle::statLabel() {
    return {11.5, QFont::Normal, Tint::Secondary, 0};
}
constexpr TextStyle TextStyle::secondary() {
    return {12, QFont::Normal, Tint::Secondary, 0};
}
constexpr TextStyle TextStyle::note() {
    return {12, QFont::Normal, Tint::Text, 0};
}
constexpr TextStyle TextStyle::row() {
    return {12.5, QFont::Normal, Tint::Text, 0};
}
constexpr TextStyle TextStyle::body() {
    return {13, QFont::Normal, Tint::Text, 0};
}
constexpr TextStyle TextStyle::bodySecondary() {
    return {13, QFont::Normal, Tint::Secondary, 0};
}
constexpr TextStyle TextStyle::heading() {
    return {13, QFont::DemiBold, Tint::Text, 0};
}
constexpr TextStyle TextStyle::columnTitle() {
    return {15, QFont::DemiBold, Tint::Text, 0};
}
constexpr TextStyle TextStyle::detailTitle() {
    return {17, QFont::DemiBold, Tint::Text, 0};
}
constexpr TextStyle TextStyle::welcomeTitle() {
    return {26, QFont::Bold, Tint::Text, -0.5};
}
constexpr TextStyle TextStyle::welcomeBody() {
    return {14, QFont::Normal, Tint::Secondary, 0};
}
constexpr TextStyle TextStyle::figure() {
    return {40, QFont::Bold, Tint::Text, -1};
}
constexpr TextStyle TextStyle::heroFigure() {
    return {50, QFont::Bold, Tint::Text, -1.4};
}

} // namespace quillane
