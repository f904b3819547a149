#pragma once
#include <cstdint>
#include <string>
#include <vector>

// Quick Look's panel and a window before it, as far as the Mac's adapter calls them. Begun with StandIn::begin() and
// beginPanel().
namespace quillane::StandIn {

// Whom the panel asks when it opens, and when it tells that it has closed.
enum class Asking { theWindow, nobody };
enum class Ending { atOnce, later };
void beginPanel(Asking asking, Ending ending = Ending::atOnce);

// The content of the window, as the program is given it.
std::uintptr_t content();
// The panel is closed by its own button.
void closePanel();
// The end of control that is still to be told comes.
void endLate();
// Another window comes to the front, and the first again. The panel asks anew.
void bringOtherForward();
void bringBack();
// Somebody else takes a place in the chain behind the window, before the program.
void stepInBetween();

struct Panel {
    bool isMade = false;
    bool isVisible = false;
    std::string location{}; // that the data source tells; empty for none
    bool hasDelegate = false;
    int openings = 0;
    int loadings = 0;
};
Panel panel();
// How many stand behind the window.
int responders();

enum class Event { keyDown, keyUp };
// Whether the delegate took the key of that code, with those modifiers.
bool passKey(std::uint16_t code, unsigned long modifiers = 0, Event event = Event::keyDown);

} // namespace quillane::StandIn
