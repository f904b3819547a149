#pragma once
#include "PreviewPanel.h"
#include <cstdint>
#include <optional>

namespace quillane {

// Which key of the panel stands at this place of a Mac's keyboard, which no layout moves; nothing for one that moves in
// no list, and is the panel's own. Any thread.
std::optional<PreviewPanel::Key> panelKeyAt(std::uint16_t keyCode);

} // namespace quillane
