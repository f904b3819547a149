#pragma once
#include "FileSystem.h"
#include "FunctionRef.h"
#include "StopToken.h"
#include <string>

namespace quillane {

// Walks everything below `root` by its paths, each folder before what it holds. FileSystem::walk() is cheaper
// and tells no paths. `visit` answers whether a folder is entered; for everything else its answer counts
// nothing. Links are told and not entered, except a root that is one. What can't be listed is skipped. Memory
// grows with the names of one folder and the folders still to be entered. A request to stop is looked at before each
// listing.
using PathVisitor = FunctionRef<bool(const std::string& path, const DirectoryEntry& entry)>;
void walkPaths(const FileSystem& files, const FileURL& root, PathVisitor visit, const StopToken& stop = {});

} // namespace quillane
