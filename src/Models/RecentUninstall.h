#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "Hashing.h"
#include <optional>
#include <string>
#include <vector>

namespace quillane {

// An application that vanished, and what it left behind when it did.
struct RecentUninstall {
    // The frozen copy of a leftover.
    struct Leftover {
        FileURL url;
        std::string category;
        Bytes bytes = 0; // at the time of the record
        bool highConfidence = false;
        friend bool operator==(const Leftover&, const Leftover&) = default;
    };

    std::string name;
    std::optional<std::string> bundleIdentifier; // absent when the application had none
    Date removedAt;                              // when the record was made
    std::vector<Leftover> leftovers;

    // The identifier, or the name when there is none.
    const std::string& id() const { return bundleIdentifier ? *bundleIdentifier : name; }
    friend bool operator==(const RecentUninstall&, const RecentUninstall&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::RecentUninstall::Leftover> {
    std::size_t operator()(const quillane::RecentUninstall::Leftover& leftover) const noexcept {
        return quillane::hashOf(leftover.url, leftover.category, leftover.bytes, leftover.highConfidence);
    }
};

template <>
struct std::hash<quillane::RecentUninstall> {
    std::size_t operator()(const quillane::RecentUninstall& record) const noexcept {
        return quillane::hashOf(record.name, record.bundleIdentifier, record.removedAt,
                                quillane::hashOfRange(record.leftovers));
    }
};
