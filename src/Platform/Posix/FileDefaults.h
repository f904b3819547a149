#pragma once
#include "Defaults.h"
#include "PropertyList.h"
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>

namespace quillane {

// Settings in one XML property list. Written whole, atomically and durably at each change, under a lock that
// other instances heed: a change of one key never undoes another instance's change of a second. A file that is
// missing or damaged counts as empty and is replaced at the next change; one that is there and can't be read is
// left alone, and what was read before stays known. A change that can't be written holds for this process and
// is written with the next one that can. Values of kinds that settings don't have are kept as they are.
class FileDefaults final : public Defaults {
  public:
    // `path` is a path of the machine; its folder is made when the first value is stored.
    explicit FileDefaults(std::string path);
    // The file of the user: below $XDG_CONFIG_HOME, else ~/.config.
    static std::string userPath(const std::string& home);

    std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, Value value) override;
    void clear(std::string_view key) override;
    void registerDefaults(const std::map<std::string, Value>& values) override;
    SubscriptionId subscribe(std::function<void(const std::string& key)> changed) override;
    void unsubscribe(SubscriptionId id) override;

  private:
    // What tells one state of the file from another.
    struct Stamp {
        bool exists = false;
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        std::int64_t modifiedSeconds = 0;
        std::int64_t modifiedNanoseconds = 0;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    using Stored = std::map<std::string, PropertyList::Value, std::less<>>;

    // Nothing when it could not be told.
    std::optional<Stamp> stampOfFile() const;
    // False when the file is there and could not be read.
    bool reloadIfChanged() const;
    void change(std::string_view key, std::optional<PropertyList::Value> value);
    bool write(const Stored& values) const;
    void tell(const std::string& key);

    std::string m_path;
    mutable Stored m_stored;
    mutable std::optional<Stamp> m_stamp = Stamp(); // of what is stored; nothing when it is not known
    // Changes that are not in the file yet; nothing for what was taken away.
    std::map<std::string, std::optional<PropertyList::Value>, std::less<>> m_unwritten;
    std::map<std::string, Value, std::less<>> m_registered;
    std::map<SubscriptionId, std::function<void(const std::string&)>> m_subscribers;
    SubscriptionId m_lastSubscription = 0;
};

} // namespace quillane
