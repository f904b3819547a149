#include "SweepPlan.h"
#include "HomePath.h"
#include <string_view>

namespace quillane {

void SweepPlan::add(SweepEntry row) {
    if (m_paths.insert(row.url).second) {
        m_rows.push_back(std::move(row));
    }
}

std::vector<SweepEntry> SweepPlan::takeRows() {
    m_paths.clear();
    m_count = 0;
    return std::exchange(m_rows, {});
}

Bytes SweepPlan::bytes() const {
    return sumOfBytes(m_rows, [](const SweepEntry& row) { return row.bytes; });
}

} // namespace quillane

namespace quillane::SweepRows {
namespace {

constexpr std::string_view kSeparator = " - ";

std::string joined(const std::string& first, std::string_view second) {
    return first + std::string(kSeparator) + std::string(second);
}

} // namespace

std::string subtitle(const std::string& category, const FileURL& url) {
    return joined(category, url.lastPathComponent());
}

SweepEntry rowFor(const DevCacheItem& item, const FileURL& home) {
    return {item.url, SweepCategory::developer, joined(item.tool, item.kind),
            pathWithHomeAsTilde(item.url, home), item.bytes};
}

} // namespace quillane::SweepRows
