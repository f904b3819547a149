#pragma once
#include "SampleMac.h"

namespace quillane {

// Lays what starts by itself on a Mac that has its applications already: each kind, health and owner, what launchd has
// loaded of it, and what only looks like it.
void addStartupItems(SampleMac& mac);

} // namespace quillane
