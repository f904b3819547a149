#pragma once

namespace quillane::MacInstance {

// Whether this start is to end at once, as another instance of this program runs in this session; that one has been
// asked to come forward. The system itself starts an application once, but "open -n" and the bare executable don't
// ask it. One that `isRelaunched` (Workspace::kRelaunched) waits first for the one that began it, as long as that lives.
// Main thread, before the application stands.
bool bringOtherForward(bool isRelaunched);

} // namespace quillane::MacInstance
