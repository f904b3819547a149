#pragma once
#include "TreeContent.h"
#include <cstdint>
#include <list>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace quillane {

using Random = std::mt19937_64;

inline int upTo(Random& random, int most) {
    return std::uniform_int_distribution<int>(0, most)(random);
}

// Something of a person that a sweep may take: a file, a folder with all it holds, a link, an application. No two
// have the same content, whatever their names.
struct TrialItem {
    std::string path; // below the home folder
    TreeContent tree;
    std::string nameInTrash; // empty while it is at home
    bool isAtHome() const { return nameInTrash.empty(); }
};

// A home folder that lives through many kills: what a person has in it, as it must be found.
class TrialHome {
  public:
    // Lays the folders, and what is never to be touched.
    TrialHome(std::string home, Random& random);

    // New items until there are enough, some with the names of what lies in the Trash by now.
    void fill();
    // As when a person tidies up: folders that are empty by now go, and are made again when something is put back.
    void removeEmptiedFolders() const;

    std::string path(const std::string& below) const { return m_home + "/" + below; }
    const std::string& home() const { return m_home; }
    std::string trash() const { return path(".local/share/Trash"); }
    std::list<TrialItem>& items() { return m_items; }
    const std::list<TrialItem>& items() const { return m_items; }
    // What lies at home and is no item: it must be found unchanged, but for the dates of folders.
    const TreeContent& others() const { return m_others; }
    bool mayBeMissing(const std::string& folder) const;
    std::uint64_t laid() const { return m_laid; } // items so far

    static constexpr const char* kProtected = "Library/Caches/protected";
    // Where the program keeps its own things.
    static constexpr const char* kOwn[] = {".config", ".local"};

  private:
    void layItem(const std::string& path);
    void layFile(const std::string& path, std::size_t size, mode_t mode);
    void layLink(const std::string& path);
    void layFolder(const std::string& path, int depth);
    void setDates(const std::string& path);
    std::string freePath();

    const std::string m_home;
    Random& m_random;
    std::list<TrialItem> m_items;
    TreeContent m_others;
    std::uint64_t m_laid = 0;
    std::uint64_t m_pieces = 0;
};

} // namespace quillane
