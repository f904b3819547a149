#pragma once
#include "StatusItem.h"
#include <memory>

namespace quillane {

// The item in the menu bar, in the room of the system's items: the drawing "MenuBarIconTemplate" of the bundle, or,
// without a bundle, the system's own symbol. VoiceOver calls it by StatusItem::titleWith. Main thread only.
std::unique_ptr<StatusItem> makeStatusItem(StatusItem::Handlers handlers);

} // namespace quillane
