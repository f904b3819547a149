#pragma once
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillane {

// Finds numbers by keys that are kept elsewhere, such as the places of a list's elements by their paths. It holds no
// key: each call brings the hash of one and `hasKey(number)`, which tells whether that number's key equals it. Ten
// times cheaper to fill than a map of strings, which copies each of them.
class IndexTable {
  public:
    IndexTable() = default;
    // Room for so many numbers, which must all be less than 2^32 - 1. It does not grow.
    explicit IndexTable(std::size_t room)
        : m_slots(std::bit_ceil(2 * room + 1)) {}

    // The number with this key; where there is none, `number`, which has it from now on.
    template <class HasKey>
    std::size_t findOrAdd(std::size_t hash, std::size_t number, HasKey hasKey) {
        Slot& slot = m_slots[slotFor(hash, hasKey)];
        if (slot.entry == 0) {
            slot = {tagOf(hash), static_cast<std::uint32_t>(number + 1)};
        }
        return slot.entry - 1;
    }
    // The number with this key.
    template <class HasKey>
    std::optional<std::size_t> find(std::size_t hash, HasKey hasKey) const {
        if (m_slots.empty()) {
            return std::nullopt;
        }
        const Slot& slot = m_slots[slotFor(hash, hasKey)];
        return slot.entry == 0 ? std::nullopt : std::optional<std::size_t>(slot.entry - 1);
    }

  private:
    struct Slot {
        std::uint32_t tag = 0;   // of the hash: most other keys are told apart by it
        std::uint32_t entry = 0; // the number and one; 0 for none
    };

    static std::uint32_t tagOf(std::size_t hash) {
        return static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) >> 32U);
    }
    // Where the key is, or where it would go: at least half of the slots are empty.
    template <class HasKey>
    std::size_t slotFor(std::size_t hash, HasKey hasKey) const {
        const std::size_t last = m_slots.size() - 1;
        std::size_t at = hash & last;
        while (m_slots[at].entry != 0 &&
               !(m_slots[at].tag == tagOf(hash) && hasKey(std::size_t{m_slots[at].entry - 1}))) {
            at = (at + 1) & last;
        }
        return at;
    }

    std::vector<Slot> m_slots; // a power of two
};

} // namespace quillane
