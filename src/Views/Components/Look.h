#pragma once

class QApplication;

// How the whole program looks. Linux gets a style and palette of its own; macOS keeps its native style and
// palette, and only the widgets that paint themselves read the tokens. Main thread only.
namespace quillane::Look {

// Before the first widget is made.
void install(QApplication& app);

// Switches between light and dark while the program runs: all widgets recolour at once. Without effect on
// macOS, where the system does it.
void setDark(bool dark);
bool isDark();

// How much larger than usual text is: all widgets grow or shrink at once. Without effect on macOS.
void setTextScale(double factor);

// Stronger lines, and an edge in their tint round soft grounds.
void setHighContrast(bool on);

// Nothing moves: spinners stand still, values and sheets appear at once. When it is switched off, a spinner that
// stands still moves as soon as it is shown again.
void setReducedMotion(bool on);
bool reducedMotion();

// Milliseconds an animation of `milliseconds` takes: 0 with reduced motion.
int duration(int milliseconds);

} // namespace quillane::Look
