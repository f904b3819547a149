#pragma once
#include "Descriptor.h"
#include "RootedPath.h"
#include <optional>
#include <string>
#include <sys/stat.h>

namespace quillane {

// Where absolute paths begin: at the machine's own root, or at a folder that stands in for it and that no
// path leaves, be it by "..", by an absolute link or by a chain of them. Calls fail as the system's do, with
// errno. Any thread.
class Volume {
  public:
    // The machine's own root.
    Volume() = default;
    // The volume that begins at an existing folder of the machine; without it every path is missing.
    explicit Volume(const std::string& folder);

    // As open(2), close-on-exec added. O_NOFOLLOW keeps a link in the last component.
    Descriptor open(const std::string& path, int flags) const;
    // As stat(2) or lstat(2).
    bool status(const std::string& path, LastLink lastLink, struct stat& status) const;
    // As realpath(3), told in paths of the volume.
    std::optional<std::string> realPath(const std::string& path) const;
    // The same place told as a path of the machine; the last component is not resolved. Folders that don't
    // exist are taken as text.
    std::string hostPath(const std::string& path) const;

    bool isRooted() const { return !m_folder.empty(); }

  private:
    // Each system's own way to keep a path inside.
    Descriptor openRooted(const std::string& path, int flags) const;
    bool statusRooted(const std::string& path, LastLink lastLink, struct stat& status) const;

    std::string m_folder; // empty for the machine's own root; resolved otherwise
    Descriptor m_root;    // of m_folder
};

} // namespace quillane
