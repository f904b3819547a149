#include "FootprintCalculator.h"
#include "FileSystem.h"

namespace quillane::FootprintCalculator {
namespace {

Bytes allocatedBytes(const ResourceValues& values) {
    return values.totalAllocated.value_or(values.allocated.value_or(0));
}

} // namespace

Bytes size(const Platform& platform, const FileURL& url, const StopToken& stop) {
    const auto values = platform.files.resourceValues(url);
    if (!values) {
        return 0;
    }
    if (values->type == EntryType::regular) {
        return allocatedBytes(*values);
    }
    Bytes sum = 0;
    // A root that can't be walked has nothing to add.
    (void)platform.files.walk(url, {.measures = true}, [&](const WalkEntry& entry) {
        if (stop.stopRequested()) {
            return WalkAnswer::stop;
        }
        sum = checkedSum(sum, entry.allocated);
        return WalkAnswer::proceed;
    });
    return sum;
}

} // namespace quillane::FootprintCalculator
