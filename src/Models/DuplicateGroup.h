#pragma once
#include "UserFile.h"
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// Files whose contents are the same. Its identity is `id`.
struct DuplicateGroup {
    static constexpr Bytes kLeastBytes = 1'000'000; // shorter files are not compared

    std::string id;              // SHA-256 of the whole content, 64 lower-case hexadecimal digits
    std::vector<UserFile> files; // the copies, most recently used first
    Bytes bytesEach = 0;         // the length of one copy as the search told it

    std::size_t count() const { return files.size(); }
    // What all copies but one hold: 0 without files. What would not fit is the largest count of bytes, as the length
    // is hearsay.
    Bytes wastedBytes() const;
    // The sum over groups, bounded in the same way.
    static Bytes wastedBytesOf(const std::vector<DuplicateGroup>& groups);
    // The name of the first file; empty without files.
    std::string name() const;
    // The copy that should stay: the most recently used, of several the one with the shortest path, of several still
    // the first. Nothing without files.
    std::optional<UserFile> suggestedKeeper() const;

    friend bool operator==(const DuplicateGroup&, const DuplicateGroup&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::DuplicateGroup> {
    std::size_t operator()(const quillane::DuplicateGroup& group) const noexcept {
        return quillane::hashOf(group.id, quillane::hashOfRange(group.files), group.bytesEach);
    }
};
