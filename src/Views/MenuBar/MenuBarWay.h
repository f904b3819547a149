#pragma once
#include "Bytes.h"
#include <array>

namespace quillane {

class AppLibrary;

// The ways from the item in the menu bar into the program, as its popover and its menu offer them.
enum class MenuBarWay { review, window, settings, quit };

inline constexpr std::array kAllMenuBarWays = {MenuBarWay::review, MenuBarWay::window, MenuBarWay::settings,
                                               MenuBarWay::quit};

// As it is to be read.
const char* words(MenuBarWay way);
// What a review could give back now; 0 until a scan has measured it. It is added up at each call.
Bytes reclaimable(const AppLibrary& library);
// Whether it can be gone while that much is reclaimable.
bool isOpen(MenuBarWay way, Bytes reclaimable);

} // namespace quillane
