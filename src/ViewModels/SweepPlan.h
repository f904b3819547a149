#pragma once
#include "DevCacheItem.h"
#include "SweepEntry.h"
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// What a sweep of one category would take.
struct SweepPlan {
    std::vector<SweepEntry> rows;
    int count = 0; // of what the category's row names: applications, locations, groups or items of the Trash
};

// How rows are made of what was found.
namespace SweepRows {

// "Caches - com.example.tool", for what lies in a Library location.
std::string subtitle(const std::string& category, const FileURL& url);
// The path with the home folder as "~", wherever it occurs and not only at the beginning.
std::string withHomeAsTilde(std::string path, const FileURL& home);

// For a leftover or an orphan.
template <class Item>
SweepEntry rowFor(const Item& item, SweepCategory category, std::string title) {
    return {item.url, category, std::move(title), subtitle(item.category, item.url), item.bytes};
}
SweepEntry rowFor(const DevCacheItem& item, const FileURL& home);

} // namespace SweepRows
} // namespace quillane
