#pragma once
#include "Descriptor.h"
#include "FileSystem.h"

namespace quillane {

// Walks everything below an open folder, as FileSystem::walk tells. Each folder's files come before its
// folders. Neither memory nor descriptors grow with the number of entries; memory grows by a few hundred bytes
// with each level at most, and descriptors do not grow.
void walkTree(Descriptor root, WalkOptions options, FileSystem::Visitor visit);

} // namespace quillane
