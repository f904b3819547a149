#pragma once
#include "Bytes.h"
#include "DevCacheItem.h"
#include "SweepEntry.h"
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillane {

// The rows of a plan or of a removal. One path has one row: of several for a path the first stays, so that it has
// one check box and counts once.
class SweepPlan {
  public:
    // Does nothing when the path has its row already.
    void add(SweepEntry row);
    // One more of what the category's row counts.
    void countOne() { ++m_count; }
    // As many as `count`.
    void setCount(int count) { m_count = count; }

    const std::vector<SweepEntry>& rows() const { return m_rows; }
    // Leaves the plan empty.
    std::vector<SweepEntry> takeRows();
    // What the category's row counts: applications, locations, groups or items of the Trash that have something to
    // give, also what another of them gives already.
    int count() const { return m_count; }
    Bytes bytes() const;

  private:
    std::vector<SweepEntry> m_rows;
    std::unordered_set<FileURL> m_paths;
    int m_count = 0;
};

// How rows are made of what was found.
namespace SweepRows {

// "Caches - com.example.tool", for what lies in a Library location.
std::string subtitle(const std::string& category, const FileURL& url);

// For a leftover or an orphan.
template <class Item>
SweepEntry rowFor(const Item& item, SweepCategory category, std::string title) {
    return {item.url, category, std::move(title), subtitle(item.category, item.url), item.bytes};
}
SweepEntry rowFor(const DevCacheItem& item, const FileURL& home);

} // namespace SweepRows
} // namespace quillane
