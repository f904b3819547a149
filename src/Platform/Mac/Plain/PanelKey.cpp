#include "PanelKey.h"

namespace quillane {

std::optional<PreviewPanel::Key> panelKeyAt(std::uint16_t keyCode) {
    switch (keyCode) {
    case 0x7E:
        return PreviewPanel::Key::up;
    case 0x7D:
        return PreviewPanel::Key::down;
    case 0x73:
        return PreviewPanel::Key::home;
    case 0x77:
        return PreviewPanel::Key::end;
    default:
        return std::nullopt;
    }
}

} // namespace quillane
