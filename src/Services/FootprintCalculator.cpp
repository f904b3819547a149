#include "FootprintCalculator.h"
#include "FileSystem.h"

namespace quillane::FootprintCalculator {

Bytes size(const Platform& platform, const FileURL& url, const StopToken& stop) {
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
        }
        return WalkAnswer::proceed;
    };
    // A walk that can't begin leaves the sum at 0, which is the answer for it.
    static_cast<void>(platform.files.walk(url, {.measures = true}, add));
    return sum;
}

} // namespace quillane::FootprintCalculator
