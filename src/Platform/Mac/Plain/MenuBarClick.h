#pragma once

// What a click on the item in the menu bar asks for.
namespace quillane::MenuBarClick {

enum class Button {
    left,
    right,
    none // the keyboard, or an assistive tool, whose own keys may be held
};

// Whether it asks for the menu: the right button does, and the left one with the control key, where there is a menu.
// Everything else is a press.
constexpr bool opensMenu(Button button, bool isControlHeld, bool hasMenu) {
    return hasMenu && (button == Button::right || (button == Button::left && isControlHeld));
}

} // namespace quillane::MenuBarClick
