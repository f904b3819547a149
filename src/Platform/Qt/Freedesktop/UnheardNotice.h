#pragma once
#include <chrono>

namespace quillane {

// Tells a person that the program runs already and does not answer, where nobody would read it in a terminal: without
// it, nothing at all would follow upon a click in a menu. Main thread only.
class UnheardNotice {
  public:
    // Nobody has to be there to close it.
    static constexpr std::chrono::milliseconds kPatience = std::chrono::seconds(20);

    // For a start without a terminal and with a display.
    static bool isWanted();
    // Needs a QApplication. Returns once the window is closed, by whoever sees it or at the end of the patience.
    static void show(std::chrono::milliseconds patience = kPatience);
};

} // namespace quillane
