#pragma once
#include "Defaults.h"
#include <utility>

namespace quillane {

// Settings that live as long as the test.
class MemoryDefaults final : public Defaults {
  public:
    std::optional<Value> value(std::string_view key) const override {
        for (const auto* values : {&m_stored, &m_registered}) {
            if (const auto found = values->find(key); found != values->end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }
    void set(std::string_view key, Value value) override {
        m_stored.insert_or_assign(std::string(key), std::move(value));
        tell(std::string(key));
    }
    void setOrForget(std::string_view key, Value value) override { set(key, std::move(value)); }
    void update(std::string_view key, Change change) override {
        const auto found = m_stored.find(key);
        const auto before = found == m_stored.end() ? std::nullopt : std::optional(found->second);
        auto after = change(before);
        if (after == before) {
            return;
        }
        if (after) {
            set(key, std::move(*after));
        } else {
            clear(key);
        }
    }
    void updateOrForget(std::string_view key, Change change) override { update(key, std::move(change)); }
    void clear(std::string_view key) override {
        m_stored.erase(std::string(key));
        tell(std::string(key));
    }
    bool hasLost() const override { return m_hasLost; }
    void registerDefaults(const std::map<std::string, Value>& values) override {
        for (const auto& [key, value] : values) {
            m_registered.insert_or_assign(key, value);
        }
    }
    SubscriptionId subscribe(std::function<void(const std::string& key)> changed) override {
        m_subscribers.emplace(++m_lastSubscription, std::move(changed));
        return m_lastSubscription;
    }
    void unsubscribe(SubscriptionId id) override { m_subscribers.erase(id); }
    // Whether a value is stored under this key, registered ones aside.
    bool isStored(std::string_view key) const { return m_stored.contains(key); }
    // As when the file is taken away.
    void lose() {
        m_hasLost = true;
        m_stored.clear();
    }

  private:
    void tell(const std::string& key) {
        const auto subscribers = m_subscribers; // one may leave or join meanwhile
        for (const auto& [id, changed] : subscribers) {
            if (m_subscribers.contains(id)) {
                changed(key);
            }
        }
    }

    bool m_hasLost = false;
    std::map<std::string, Value, std::less<>> m_stored;
    std::map<std::string, Value, std::less<>> m_registered;
    std::map<SubscriptionId, std::function<void(const std::string&)>> m_subscribers;
    SubscriptionId m_lastSubscription = 0;
};

} // namespace quillane
