#include "UninstallerReport.h"
#include "Formatting.h"
#include <algorithm>
#include <utility>

namespace quillane::Uninstaller {
namespace {

constexpr int kNotPermitted = 1;  // EPERM: what privacy protection answers
constexpr int kAccessDenied = 13; // EACCES: what permissions answer

} // namespace

Failure Failure::fromError(FileURL url, const PlatformError& error) {
    const bool denied = error.code == ErrorCode::kWriteNoPermission ||
                        error.code == ErrorCode::kReadNoPermission || error.underlying == kNotPermitted ||
                        error.underlying == kAccessDenied;
    return {std::move(url), denied ? "No access" : "Failed", denied};
}

std::string Report::summary(std::string_view verb, std::string_view destination) const {
    std::string text(verb);
    text += " " + Formatting::number(static_cast<std::int64_t>(trashed.size())) + " item(s) ";
    text += destination;
    text += ", reclaiming " + Formatting::byteCount(reclaimedBytes) + ".";
    if (!failures.empty()) {
        text += "\n\n" + Formatting::number(static_cast<std::int64_t>(failures.size())) + " item(s) failed";
        text += std::ranges::all_of(failures, &Failure::isAccessDenied)
                    ? ": macOS blocked access. Grant Full Disk Access to include them."
                    : ".";
    }
    return text;
}

} // namespace quillane::Uninstaller
