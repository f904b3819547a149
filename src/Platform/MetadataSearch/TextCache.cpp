#include "TextCache.h"
#include <utility>

namespace quillane {

TextCache::Text TextCache::find(const ResourceValues& file, DocumentKind kind) {
    const auto now = m_clock.instant();
    const std::lock_guard lock(m_mutex);
    const auto known = m_known.find(Key(file, kind));
    if (known == m_known.end()) {
        return nullptr;
    }
    if (known->second->end <= now) {
        forget(known);
        return nullptr;
    }
    m_entries.splice(m_entries.begin(), m_entries, known->second);
    known->second->asked = now;
    return known->second->text;
}

void TextCache::keep(const ResourceValues& file, DocumentKind kind, Text text, Instant end) {
    const auto now = m_clock.instant();
    const auto cost = costOf(text);
    const Key key(file, kind);
    const std::lock_guard lock(m_mutex);
    if (const auto known = m_known.find(key); known != m_known.end()) {
        forget(known);
    }
    if (!makeRoom(cost, now)) {
        return;
    }
    m_entries.push_front({key, std::move(text), end, now});
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

bool TextCache::makeRoom(std::size_t bytes, Instant now) {
    if (bytes > m_mostBytes) {
        return false;
    }
    while (m_bytes + bytes > m_mostBytes) {
        const auto& last = m_entries.back();
        if (last.asked + kLately > now && last.end > now) {
            return false;
        }
        forget(m_known.find(last.key));
    }
    return true;
}

void TextCache::forget(std::map<Key, Entries::iterator>::iterator known) {
    m_bytes -= costOf(known->second->text);
    m_entries.erase(known->second);
    m_known.erase(known);
}

} // namespace quillane
