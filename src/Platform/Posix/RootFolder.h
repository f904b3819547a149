#pragma once
#include "Descriptor.h"
#include "FileURL.h"
#include <string>

namespace quillane {

// The volume on which paths are looked up: the machine's own root, or a folder that plays one. Below such a
// folder no path leads out, links and ".." included.
class RootFolder {
  public:
    // The machine's own root.
    RootFolder() = default;
    // `hostFolder` is a path of the machine. Opening fails later when it does not exist.
    explicit RootFolder(const std::string& hostFolder);

    // As openat does for an absolute path of the volume; empty, with errno set, when it fails. O_CLOEXEC is
    // always added.
    Descriptor open(const std::string& path, int flags) const;
    // The folder that holds `url`, opened so that entries can be worked on by name, links on the way to it
    // followed. Empty, with errno set, when it fails.
    Descriptor openParent(const FileURL& url) const;

  private:
    bool m_isRooted = false;
    Descriptor m_root;
};

} // namespace quillane
