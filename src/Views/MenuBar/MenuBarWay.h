#pragma once
#include <array>

namespace quillane {

class AppLibrary;

// The ways from the item in the menu bar into the program, as its popover and its menu offer them.
enum class MenuBarWay { review, window, settings, quit };

inline constexpr std::array kAllMenuBarWays = {MenuBarWay::review, MenuBarWay::window, MenuBarWay::settings,
                                               MenuBarWay::quit};

// As it is to be read.
const char* words(MenuBarWay way);
// Whether it can be gone now.
bool isOpen(MenuBarWay way, const AppLibrary& library);

} // namespace quillane
