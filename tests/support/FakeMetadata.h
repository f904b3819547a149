#pragma once
#include "Metadata.h"
#include <mutex>
#include <unordered_map>

namespace quillane {

// A metadata index that is a table. Any thread.
class FakeMetadata final : public Metadata {
  public:
    void setLastUsed(const FileURL& url, Date date) {
        const std::lock_guard lock(m_mutex);
        m_lastUsed.insert_or_assign(url, date);
    }

    std::optional<Date> lastUsed(const FileURL& url) const override {
        const std::lock_guard lock(m_mutex);
        const auto found = m_lastUsed.find(url);
        return found == m_lastUsed.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    mutable std::mutex m_mutex; // guards the table
    std::unordered_map<FileURL, Date> m_lastUsed;
};

} // namespace quillane
