#pragma once
#include "BigEndian.h"
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quillane {

// Lays out a binary property list from objects that are given as bytes, so that tests can say what no writer
// would ever write. References and offsets take the sizes told.
struct BinaryListBuilder {
    std::vector<std::string> objects;
    std::uint64_t top = 0;
    std::size_t offsetSize = 2;
    std::size_t referenceSize = 1;

    // The number as `size` bytes, the most significant first.
    static std::string number(std::uint64_t value, std::size_t size) {
        std::string bytes;
        appendBigEndian(bytes, value, size);
        return bytes;
    }

    // The first byte of an object and, from 15 on, the count behind it.
    static std::string head(unsigned marker, std::size_t count) {
        if (count < 15) {
            return {static_cast<char>(marker << 4U | static_cast<unsigned>(count))};
        }
        return static_cast<char>(marker << 4U | 0xFU) + std::string("\x12") + number(count, 4);
    }

    static std::string text(const std::string& ascii) { return head(5, ascii.size()) + ascii; }

    std::string references(const std::vector<std::uint64_t>& to) const {
        std::string bytes;
        for (const auto object : to) {
            bytes += number(object, referenceSize);
        }
        return bytes;
    }

    std::string array(const std::vector<std::uint64_t>& to) const {
        return head(0xA, to.size()) + references(to);
    }

    std::string dictionary(const std::vector<std::uint64_t>& keys,
                           const std::vector<std::uint64_t>& values) const {
        return head(0xD, keys.size()) + references(keys) + references(values);
    }

    std::string trailer(std::uint64_t count, std::uint64_t table) const {
        return std::string(6, '\0') + static_cast<char>(offsetSize) + static_cast<char>(referenceSize) +
               number(count, 8) + number(top, 8) + number(table, 8);
    }

    std::string bytes() const {
        std::string all = "bplist00";
        std::string table;
        for (const auto& object : objects) {
            table += number(all.size(), offsetSize);
            all += object;
        }
        const auto tableAt = all.size();
        return all + table + trailer(objects.size(), tableAt);
    }
};

} // namespace quillane
