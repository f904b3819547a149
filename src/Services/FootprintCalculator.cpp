#include "FootprintCalculator.h"
#include "FileSystem.h"
#include "WalkedPaths.h"

namespace quillane::FootprintCalculator {
namespace {

// `skips` is asked for each folder below.
Bytes measure(const Platform& platform, const FileURL& url, const StopToken& stop,
              FunctionRef<bool(const WalkEntry&)> skips) {
    const auto values = platform.files.resourceValues(url);
    if (!values) {
        return 0;
    }
    if (values->type == EntryType::regular) {
        return values->totalAllocated.value_or(values->allocated.value_or(0));
    }
    Bytes sum = 0;
    const auto add = [&](const WalkEntry& entry) {
        if (stop.stopRequested()) {
            return WalkAnswer::stop;
        }
        if (entry.type == EntryType::regular) {
            sum = checkedSum(sum, entry.allocated);
        } else if (entry.type == EntryType::directory && skips(entry)) {
            return WalkAnswer::skipBelow;
        }
        return WalkAnswer::proceed;
    };
    // A walk that can't begin leaves the sum at 0, which is the answer for it.
    static_cast<void>(platform.files.walk(url, {.measures = true}, add));
    return sum;
}

} // namespace

Bytes size(const Platform& platform, const FileURL& url, const StopToken& stop) {
    return measure(platform, url, stop, [](const WalkEntry&) { return false; });
}

Bytes sizeOfRest(const Platform& platform, const FileURL& url, const StopToken& stop, LeavesOut leavesOut) {
    WalkedPaths paths(url);
    return measure(platform, url, stop,
                   [&](const WalkEntry& folder) { return leavesOut(paths.told(folder)); });
}

} // namespace quillane::FootprintCalculator
