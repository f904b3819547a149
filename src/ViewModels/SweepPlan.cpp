#include "SweepPlan.h"
#include "HomePath.h"
#include <string_view>

namespace quillane {

void SweepPlan::add(SweepEntry row) {
    const FileURL url = row.url;
    add(url, row.bytes, [&row] { return std::move(row); });
}

std::vector<SweepEntry> SweepPlan::takeRows() {
    m_paths.clear();
    m_bytes = 0;
    m_count = 0;
    return std::exchange(m_rows, {});
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

SweepEntry rowFor(const UserFile& file, const FileURL& home) {
    return {file.url, SweepCategory::files, file.name(), file.folder(home), file.bytes};
}

SweepEntry rowFor(const StartupItem& item) {
    return {item.url, SweepCategory::startup, item.label,
            subtitle(std::string(rawValue(item.kind)), item.url), item.bytes};
}

} // namespace quillane::SweepRows
