#pragma once
#include "Bytes.h"
#include "DevCacheItem.h"
#include "StartupItem.h"
#include "SweepEntry.h"
#include "UserFile.h"
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace quillane {

// The rows of a plan or of a removal. One path has one row: of several for a path the first stays, so that it has
// one check box and counts once.
class SweepPlan {
  public:
    // What is wanted of it. For figures alone no row is made, which is most of the cost of a plan.
    enum class Keeps { rows, figures };
    explicit SweepPlan(Keeps keeps = Keeps::rows)
        : m_keeps(keeps) {}

    // Does nothing when the path has its row already.
    void add(SweepEntry row);
    // The same for the row of this path and size that `makeRow()` makes, if it is called at all.
    template <class MakeRow>
    void add(const FileURL& url, Bytes bytes, MakeRow makeRow) {
        if (!m_paths.insert(url).second) {
            return;
        }
        m_bytes = checkedSum(m_bytes, bytes);
        if (m_keeps == Keeps::rows) {
            m_rows.push_back(makeRow());
        }
    }
    // One more of what the category's row counts.
    void countOne() { ++m_count; }
    // As many as `count`.
    void setCount(int count) { m_count = count; }

    // Empty in a plan that keeps figures alone.
    const std::vector<SweepEntry>& rows() const { return m_rows; }
    // Leaves the plan empty.
    std::vector<SweepEntry> takeRows();
    // What the category's row counts: applications, locations, groups or items of the Trash that have something to
    // give, also what another of them gives already.
    int count() const { return m_count; }
    Bytes bytes() const { return m_bytes; }

  private:
    Keeps m_keeps;
    std::vector<SweepEntry> m_rows;
    std::unordered_set<FileURL> m_paths;
    Bytes m_bytes = 0;
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
SweepEntry rowFor(const UserFile& file, const FileURL& home);
SweepEntry rowFor(const StartupItem& item);

} // namespace SweepRows
} // namespace quillane
