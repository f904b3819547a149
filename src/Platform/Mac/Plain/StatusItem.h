#pragma once
#include "MenuBarExtra.h"
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// The item that the system draws: an icon, with a figure beside it. It stands from its making to its end. Main thread
// only; nothing waits.
class StatusItem {
  public:
    // Called within the system's own call, and not after the item is gone.
    struct Handlers {
        std::function<void(std::optional<MenuBarExtra::Place> place)> pressed;
        std::function<void(int id)> chosen; // an entry of the menu
        std::function<void()> shownChanged;
    };

    virtual ~StatusItem() = default;
    // Whether the menu bar has it; it may have no room for it.
    virtual bool isShown() const = 0;
    // Empty for the icon alone, as at first.
    virtual void setFigure(const std::string& figure) = 0;
    // What a click opens that asks for a menu; empty for none, as at first.
    virtual void setMenu(const std::vector<MenuBarExtra::Entry>& menu) = 0;

    // How it is called where nobody sees it: "Quillane", and after it the figure, where there is one.
    static std::string titleWith(const std::string& figure) {
        return figure.empty() ? "Quillane" : "Quillane, " + figure;
    }
};

} // namespace quillane
