#include "NotificationCenter.h"
#include <utility>
#include <vector>

namespace quillane {

NotificationCenter::Subscription NotificationCenter::observe(std::string_view name, Handler handler) {
    auto entry = std::make_shared<Entry>(std::string(name), std::move(handler));
    m_entries.push_back(entry);
    return Subscription(std::move(entry));
}

void NotificationCenter::post(std::string_view name, const Object& object) {
    std::erase_if(m_entries, [](const auto& entry) { return entry.expired(); });
    const std::vector<std::weak_ptr<Entry>> told = m_entries;
    for (const auto& weak : told) {
        const auto entry = weak.lock(); // kept alive while its handler runs, which may let it go
        if (entry && entry->name == name) {
            entry->handler(object);
        }
    }
}

} // namespace quillane
