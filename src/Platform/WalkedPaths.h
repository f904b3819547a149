#pragma once
#include "FileSystem.h"
#include <string>
#include <vector>

namespace quillane {

// Turns the names and levels of a walk into paths. Tell it each entry in turn; who needs the paths of folders
// alone need not tell the rest.
class WalkedPaths {
  public:
    explicit WalkedPaths(const FileURL& root)
        : m_lengths{root.path() == "/" ? 0 : root.path().size()}
        , m_path(root.path()) {}

    void tell(const WalkEntry& entry) {
        const auto level = static_cast<std::size_t>(entry.level);
        m_lengths.resize(level);
        m_path.resize(m_lengths.back());
        m_path += '/';
        m_path += entry.name;
        m_lengths.push_back(m_path.size());
    }
    // The path of the entry told last; of the root before that.
    FileURL current() const { return FileURL(m_path); }
    // The same as text, until the next is told.
    const std::string& path() const { return m_path; }
    // Both in one.
    FileURL told(const WalkEntry& entry) {
        tell(entry);
        return current();
    }

  private:
    std::vector<std::size_t> m_lengths; // of the paths of the root and of the folders down to the last entry
    std::string m_path;
};

} // namespace quillane
