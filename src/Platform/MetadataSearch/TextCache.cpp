#include "TextCache.h"
#include <utility>

namespace quillane {

TextCache::Text TextCache::find(const ResourceValues& file) {
    const std::lock_guard lock(m_mutex);
    const auto known = m_known.find(Key(file));
    if (known == m_known.end()) {
        return nullptr;
    }
    m_entries.splice(m_entries.begin(), m_entries, known->second);
    return known->second->text;
}

void TextCache::keep(const ResourceValues& file, Text text) {
    const auto cost = costOf(text);
    if (cost > m_mostBytes) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    const Key key(file);
    if (const auto known = m_known.find(key); known != m_known.end()) {
        forget(known);
    }
    while (m_bytes + cost > m_mostBytes) {
        forget(m_known.find(m_entries.back().key));
    }
    m_entries.push_front({key, std::move(text)});
    m_known.emplace(key, m_entries.begin());
    m_bytes += cost;
}

std::size_t TextCache::bytes() const {
    const std::lock_guard lock(m_mutex);
    return m_bytes;
}

std::size_t TextCache::costOf(const Text& text) {
    constexpr std::size_t kOfEntry = 256; // both nodes, the text's own block and what the allocator adds
    return text->size() + kOfEntry;
}

void TextCache::forget(std::map<Key, Entries::iterator>::iterator known) {
    m_bytes -= costOf(known->second->text);
    m_entries.erase(known->second);
    m_known.erase(known);
}

} // namespace quillane
