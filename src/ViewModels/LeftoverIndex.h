#pragma once
#include "InstalledApp.h"
#include <cstddef>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quillane {

// Finds the applications of a list that hold a leftover, by its location, at a cost that does not grow with the
// list. Applications may leave the list; one that joins or gets other leftovers makes the index untrue.
class LeftoverIndex {
  public:
    // Costs as much as the list has leftovers.
    explicit LeftoverIndex(const std::vector<InstalledApp>& apps);

    // The places, in the list as it is now, of those that hold one of these. Each location is told once: it is
    // forgotten here as it will be there.
    std::set<std::size_t> take(const std::unordered_set<FileURL>& urls);
    // These places, ascending and in the list as it was, have been taken out of it.
    void appsLeft(const std::vector<std::size_t>& places);

  private:
    // Holders by their place in the list as it was at first.
    std::unordered_multimap<FileURL, std::size_t> m_holders;
    std::vector<std::size_t> m_left; // those places that are gone, ascending
};

} // namespace quillane
