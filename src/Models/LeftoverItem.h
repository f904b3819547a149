#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Hashing.h"
#include <compare>
#include <string>
#include <string_view>

namespace quillane {

// A support file or folder that belongs to an application. Its identity is `url`.
struct LeftoverItem {
    // How the match was made: by the bundle identifier, or only by the application's name.
    enum class Confidence { medium, high };

    FileURL url;
    std::string category; // the word of the Library location that holds it, such as "Caches"
    Confidence confidence = Confidence::medium;
    Bytes bytes = 0;
    bool requiresAdmin = false; // the location lies outside the user's home folder
    bool isCache = false;       // regenerable: the only leftovers that reclaiming caches may touch

    const FileURL& id() const { return url; }
    friend bool operator==(const LeftoverItem&, const LeftoverItem&) = default;
};

// "Bundle ID" or "Name": what the match rests on, as the user is told.
std::string_view rawValue(LeftoverItem::Confidence confidence);

} // namespace quillane

template <>
struct std::hash<quillane::LeftoverItem> {
    std::size_t operator()(const quillane::LeftoverItem& item) const noexcept {
        return quillane::hashOf(item.url, item.category, item.confidence, item.bytes, item.requiresAdmin,
                                item.isCache);
    }
};
