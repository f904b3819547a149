#pragma once
#include "Components/Tint.h"
#include <QColor>
#include <QPalette>

namespace quillane {

// Every colour of the window, once for light and once for dark. Read `current()` inside paintEvent and keep
// nothing of it: the set may change between two paints.
struct Tokens {
    QColor page, base, alt, sidebar, card;
    QColor line, line2;        // edges of columns and cards; lines between rows of a card
    QColor text, text2, text3; // primary; secondary; prompts and quiet marks
    QColor accent, accentHover, link;
    QColor sel, selIdle; // selected row with and without focus
    QColor side, fill;   // sidebar selection; grounds of badges, notes, tracks and fields
    QColor ctl, ctlLine; // push buttons and fields
    QColor ring;         // keyboard focus
    QColor switchOff;
    QColor orange, orangeSoft, red, redSoft, green, greenSoft;
    QColor permanent; // ground of the button that deletes for good; the same in both modes
    QColor heroTop, heroBottom;
    QColor scrim;
    QColor shadow; // below a card; transparent where depth comes from lighter cards
    QColor caches, developer, orphans, trash, apps, files, startup;
    bool dark = false;
    bool highContrast = false; // soft grounds then get an edge in their tint

    static const Tokens& light();
    static const Tokens& darkSet();
    // The set that fits the application's palette: dark when its text is lighter than its window.
    static const Tokens& current();
    // Whether current() answers with lines and edges that are easier to see. Look::setHighContrast calls it.
    static void preferHighContrast(bool on);
    // The set by what is wanted, whatever the palette says.
    static const Tokens& of(bool dark, bool highContrast);

    QColor tint(Tint tint) const;
    // The ground of a badge, note or tile in this tint; `fill` for those without a colour of their own.
    QColor soft(Tint tint) const;
    QPalette palette() const;
};

// `color` with its alpha multiplied by `factor`, 0 to 1.
QColor faded(QColor color, double factor);

} // namespace quillane
