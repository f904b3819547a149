#pragma once
#include <functional>
#include <unordered_map>
#include <vector>

namespace quillane {

// Those of the records that have these keys, in the order of the keys; a key that no record has is left out.
// Of two records with one key the first counts.
template <class Record, class KeyOf, class Key>
std::vector<Record> recordsWithKeys(const std::vector<Record>& records, KeyOf keyOf,
                                    const std::vector<Key>& keys) {
    std::unordered_map<Key, const Record*> byKey;
    for (const auto& record : records) {
        byKey.emplace(std::invoke(keyOf, record), &record);
    }
    std::vector<Record> found;
    for (const auto& key : keys) {
        if (const auto at = byKey.find(key); at != byKey.end()) {
            found.push_back(*at->second);
        }
    }
    return found;
}

} // namespace quillane
