#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Hashing.h"
#include "SweepCategory.h"
#include <string>

namespace quillane {

// One path planned for removal. Its identity is `url`.
struct SweepEntry {
    FileURL url; // of the Trash's row only a token, never opened or moved
    SweepCategory category = SweepCategory::caches;
    std::string title;    // first line of a row, and the status while it is moved
    std::string subtitle; // second line of a row
    Bytes bytes = 0;      // shown, and credited when the move succeeds

    const FileURL& id() const { return url; }
    friend bool operator==(const SweepEntry&, const SweepEntry&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::SweepEntry> {
    std::size_t operator()(const quillane::SweepEntry& entry) const noexcept {
        return quillane::hashOf(entry.url, entry.category, entry.title, entry.subtitle, entry.bytes);
    }
};
