#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// The program's item in the menu bar, or in the panel of the desktop: an icon, with a figure beside it where the system
// draws one. Main thread only; nothing waits.
class MenuBarExtra {
  public:
    // A point of the desktop in device-independent pixels.
    struct Place {
        int x = 0;
        int y = 0;
        friend bool operator==(const Place&, const Place&) = default;
    };
    // A click on the item.
    struct Press {
        std::optional<Place> place;  // on the icon; nothing where the panel does not tell
        std::string activationToken; // with which a window may come to the front; empty for none
        friend bool operator==(const Press&, const Press&) = default;
    };
    // A line of the menu that panels show where no popover can be: for another kind of click, and for any click where
    // they know menus only.
    struct Entry {
        int id = 0;        // that the choice tells; the caller's own
        std::string words; // empty for a rule between others, which nobody can choose
        bool isEnabled = true;
        friend bool operator==(const Entry&, const Entry&) = default;
    };
    // An entry that was chosen while it was enabled.
    struct Choice {
        int id = 0;
        std::string activationToken; // as of a press
        friend bool operator==(const Choice&, const Choice&) = default;
    };
    // Told on the main thread at a later turn, and not once the item is withdrawn. Empty functions for nobody.
    struct Handlers {
        std::function<void(const Press&)> pressed;
        std::function<void(const Choice&)> chosen;
        std::function<void()> shownChanged; // after isShown() has changed
    };

    virtual ~MenuBarExtra() = default;
    // From now on the item stands wherever there is a panel that takes it, also one that comes later or comes again.
    virtual void insert() = 0;
    // Takes it away at once.
    virtual void withdraw() = 0;
    // Whether it is inserted and a panel shows it, as far as panels tell.
    virtual bool isShown() const = 0;
    // What stands beside the icon, as it is to be read; empty for the icon alone. Kept while the item is not inserted.
    virtual void setFigure(const std::string& figure) = 0;
    // From the top; empty for no menu, as at first. Kept while the item is not inserted.
    virtual void setMenu(const std::vector<Entry>& menu) = 0;
    virtual void setHandlers(Handlers handlers) = 0;
};

} // namespace quillane
