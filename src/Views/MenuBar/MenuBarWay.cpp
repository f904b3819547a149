#include "MenuBar/MenuBarWay.h"
#include "AppLibrary.h"

namespace quillane {

const char* words(MenuBarWay way) {
    switch (way) {
    case MenuBarWay::review:
        return "Review and Clean…";
    case MenuBarWay::window:
        return "Open Quillane";
    case MenuBarWay::settings:
        return "Automation Settings…";
    case MenuBarWay::quit:
        return "Quit";
    }
    return "";
}

Bytes reclaimable(const AppLibrary& library) {
    return library.phase->kind == AppLibrary::Phase::Kind::ready ? library.selectedSweepBytes() : 0;
}

bool isOpen(MenuBarWay way, Bytes reclaimable) {
    return way != MenuBarWay::review || reclaimable != 0;
}

} // namespace quillane
