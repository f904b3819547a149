#pragma once
#include "FileURL.h"
#include <set>
#include <string>

namespace quillane {
class FileSystem;
}

// Whether two paths are two spellings of one item: on a volume that knows no case or keeps accents in another
// composition, and where a link leads to a folder on the way.
namespace quillane::ItemIdentity {

// Whether what lies at `url` is what lies at one of the paths. Other hard links of a file are other items: they have
// another name or another folder. An item that can't be asked is only itself. Blocks; any thread but the main one.
bool isOneOf(const FileSystem& files, const FileURL& url, const std::set<std::string>& paths);

} // namespace quillane::ItemIdentity
