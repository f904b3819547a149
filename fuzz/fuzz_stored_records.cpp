#include "StoredRecords.h"
#include "Utf8.h"
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using namespace quillane;

namespace {

// What is written is read back the same; everything that was read can be written.
template <class Record, class Decode>
void requireRoundTrip(const Record& record, Decode decode) {
    const auto written = StoredRecords::encode(record);
    if (!written || decode(*written) != record) {
        std::abort();
    }
}

// Whatever is stored, what is read of it never leads a sum to its stop.
void requireThatSumsCanTake(Bytes bytes) {
    if (bytes < 0 || bytes > StoredRecords::kMostStoredBytes) {
        std::abort();
    }
}

Bytes bytesOf(const std::vector<RecentUninstall>& records) {
    Bytes sum = 0;
    for (const auto& record : records) {
        for (const auto& leftover : record.leftovers) {
            if (leftover.bytes < 0) {
                std::abort();
            }
            sum = checkedSum(sum, leftover.bytes);
        }
    }
    return sum;
}

// Paths of any bytes come back as they were, and so does every text.
void requireRoundTripOf(std::string_view text) {
    std::string path = "/";
    path += text.substr(0, text.find('\0')); // no path holds one
    const FileURL url(path);
    const std::string label = Utf8::isValid(text) ? std::string(text) : "Cleanup";
    requireRoundTrip(UndoableOperation{label, Date{0.1}, {{url, url}}, 1},
                     StoredRecords::decodeUndoableOperation);
    requireRoundTrip(std::vector{RecentUninstall{label, label, Date{-0.1}, {{url, label, 1, true}}}},
                     StoredRecords::decodeRecentUninstalls);
}

} // namespace

// The input is what the settings hold under the key of either record, and a text that is to be stored.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const Defaults::Data data(bytes, bytes + size);
    if (const auto operation = StoredRecords::decodeUndoableOperation(data)) {
        requireThatSumsCanTake(operation->bytes);
        requireRoundTrip(*operation, StoredRecords::decodeUndoableOperation);
    }
    if (const auto uninstalls = StoredRecords::decodeRecentUninstalls(data)) {
        requireThatSumsCanTake(bytesOf(*uninstalls));
        requireRoundTrip(*uninstalls, StoredRecords::decodeRecentUninstalls);
    }
    requireRoundTripOf({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
