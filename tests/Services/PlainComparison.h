#pragma once
#include "FileSystem.h"
#include "Sha256.h"
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quillane {

// What ContentComparison must answer, found in the plainest way: each file is hashed by itself.
namespace PlainComparison {

inline std::string endsOf(const FileSystem& files, const FileURL& url) {
    const auto file = files.openForReading(url);
    if (!file) {
        return "";
    }
    std::vector<std::byte> bytes(65'536);
    Sha256 hash;
    const auto begin = (*file)->readAt(bytes, 0);
    if (!begin) {
        return "";
    }
    hash.update(std::span(bytes).first(*begin));
    if (const auto length = (*file)->length(); length && *length > 65'536) {
        if (const auto end = (*file)->readAt(bytes, *length - 65'536)) {
            hash.update(std::span(bytes).first(*end));
        }
    }
    return (*file)->close() ? hash.hex() : "";
}

inline std::string wholeOf(const FileSystem& files, const FileURL& url) {
    const auto file = files.openForReading(url);
    if (!file) {
        return "";
    }
    std::vector<std::byte> bytes(1'048'576);
    Sha256 hash;
    for (Bytes offset = 0;;) {
        const auto read = (*file)->readAt(bytes, offset);
        if (!read || *read == 0) {
            break;
        }
        hash.update(std::span(bytes).first(*read));
        offset += static_cast<Bytes>(*read);
    }
    return (*file)->close() ? hash.hex() : "";
}

// Digest and paths of each group.
using Groups = std::vector<std::pair<std::string, std::vector<FileURL>>>;

inline Groups groupsOf(const FileSystem& files, const std::map<Bytes, std::vector<FileURL>>& bySize) {
    std::map<std::tuple<Bytes, std::string>, std::vector<FileURL>> byEnds;
    for (const auto& [size, urls] : bySize) {
        for (const auto& url : urls) {
            if (const auto ends = endsOf(files, url); urls.size() > 1 && !ends.empty()) {
                byEnds[{size, ends}].push_back(url);
            }
        }
    }
    Groups groups;
    for (const auto& [ends, urls] : byEnds) {
        std::map<std::string, std::vector<FileURL>> byWhole;
        for (const auto& url : urls) {
            if (const auto whole = wholeOf(files, url); urls.size() > 1 && !whole.empty()) {
                byWhole[whole].push_back(url);
            }
        }
        for (auto& [whole, same] : byWhole) {
            if (same.size() > 1) {
                groups.emplace_back(whole, std::move(same));
            }
        }
    }
    return groups;
}

} // namespace PlainComparison
} // namespace quillane
