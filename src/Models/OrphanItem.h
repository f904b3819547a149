#pragma once
#include "Bytes.h"
#include "Date.h"
#include "FileURL.h"
#include "Hashing.h"
#include <optional>
#include <string>

namespace quillane {

// An entry of a Library location that looks like the data of an application that is not installed any more.
struct OrphanItem {
    FileURL url;            // a folder or a file, directly inside the location
    std::string category;   // the word of the location, such as "Caches"
    std::string identifier; // the bundle identifier that the name stands for, in the name's own letter case
    std::string vendor;     // what groups go by: "com.example" in lower case, or the whole identifier
    Bytes bytes = 0;        // on disk; may be 0
    std::optional<Date> lastModified; // of the entry itself; absent when it can't be read
    bool requiresAdmin = false;       // the location lies outside the user's home folder

    friend bool operator==(const OrphanItem&, const OrphanItem&) = default;
};

} // namespace quillane

template <>
struct std::hash<quillane::OrphanItem> {
    std::size_t operator()(const quillane::OrphanItem& item) const noexcept {
        return quillane::hashOf(item.url, item.category, item.identifier, item.vendor, item.bytes,
                                item.lastModified, item.requiresAdmin);
    }
};
