#pragma once
#include "Descriptor.h"
#include "FileSystem.h"

namespace quillane {

// Walks everything below an open folder, as FileSystem::walk tells. Holds few descriptors and little memory
// however deep the tree and however full its folders.
void walkBelow(Descriptor root, WalkOptions options, FileSystem::Visitor visit);

} // namespace quillane
