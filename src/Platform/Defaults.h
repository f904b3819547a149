#pragma once
#include "Date.h"
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quillane {

// The user's settings: typed values under keys, kept across launches. Values are read with the platform's
// coercions. Main thread only.
class Defaults {
  public:
    using Data = std::vector<std::uint8_t>;
    using Value = std::variant<bool, std::int64_t, double, std::string, Date, Data, std::vector<std::string>>;
    using SubscriptionId = std::uint64_t;
    // What becomes of the value that is stored; nothing for a key without one, on both sides.
    using Change = std::function<std::optional<Value>(const std::optional<Value>& stored)>;

    virtual ~Defaults() = default;

    // The stored value, else the registered one; nothing when there is neither.
    virtual std::optional<Value> value(std::string_view key) const = 0;
    // Stores durably before it returns. A failure to write keeps the value in memory and is silent.
    virtual void set(std::string_view key, Value value) = 0;
    // As set(), for a value that misleads once it is old: when the new one can't be written, the older one is not
    // found at the next launch, as far as the disk can be made to say so.
    virtual void setOrForget(std::string_view key, Value value) = 0;
    // As set(), or as clear(), for a value that depends on what is stored, by another instance too: what stands there is
    // read, changed and stored without anybody storing anything in between. A change that could not be written is made
    // anew of what is stored by then, once it can be, or once another instance has stored something: it may be called
    // at any later time, and says the same each time. A change that leaves the value as it is stores nothing.
    virtual void update(std::string_view key, Change change) = 0;
    // The same for a value that misleads once it is old; as setOrForget().
    virtual void updateOrForget(std::string_view key, Change change) = 0;
    // Takes the stored value away; a registered one shows again.
    virtual void clear(std::string_view key) = 0;
    // Whether what was stored has been lost since this began, all of it at once: its file was taken away or damaged. From
    // then on a value that is missing need not have been taken away by another instance.
    virtual bool hasLost() const = 0;
    // Values for keys that are not stored. In memory only; later calls win key by key.
    virtual void registerDefaults(const std::map<std::string, Value>& values) = 0;
    // Calls back on the main thread after the value of a key has changed.
    virtual SubscriptionId subscribe(std::function<void(const std::string& key)> changed) = 0;
    virtual void unsubscribe(SubscriptionId id) = 0;

    // Reads with the platform's coercions, all from value().
    bool boolean(std::string_view key) const;         // false when it is none
    std::int64_t integer(std::string_view key) const; // 0 when it is none
    std::optional<std::vector<std::string>> stringArray(std::string_view key) const;
    std::optional<Data> data(std::string_view key) const;
    std::optional<Date> date(std::string_view key) const; // only a stored date
};

} // namespace quillane
