#include "DuplicateGroup.h"
#include "Characters.h"
#include <limits>

namespace quillane {
namespace {

constexpr Bytes kMost = std::numeric_limits<Bytes>::max();

// Whether `file` should stay rather than `best`, which comes before it in the group.
bool isBetter(const UserFile& file, const UserFile& best) {
    const auto used = file.lastUsedSortKey();
    const auto bestUsed = best.lastUsedSortKey();
    if (used == bestUsed) {
        return Text::characterCount(file.url.path()) < Text::characterCount(best.url.path());
    }
    return used > bestUsed;
}

} // namespace

Bytes DuplicateGroup::wastedBytes() const {
    Bytes wasted = 0;
    if (files.empty()) {
        return 0;
    }
    return __builtin_mul_overflow(bytesEach, files.size() - 1, &wasted) ? kMost : wasted;
}

Bytes DuplicateGroup::wastedBytesOf(const std::vector<DuplicateGroup>& groups) {
    Bytes sum = 0;
    for (const auto& group : groups) {
        if (__builtin_add_overflow(sum, group.wastedBytes(), &sum)) {
            return kMost;
        }
    }
    return sum;
}

std::string DuplicateGroup::name() const {
    return files.empty() ? std::string() : files.front().name();
}

std::optional<UserFile> DuplicateGroup::suggestedKeeper() const {
    if (files.empty()) {
        return std::nullopt;
    }
    const auto* best = &files.front();
    for (const auto& file : files) {
        if (isBetter(file, *best)) {
            best = &file;
        }
    }
    return *best;
}

} // namespace quillane
