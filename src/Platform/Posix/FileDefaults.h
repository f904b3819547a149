#pragma once
#include "Defaults.h"
#include "PropertyList.h"
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace quillane {

class SpaceReserve;

// Settings in one XML property list. Written whole, atomically and durably at each change, under a lock that
// other instances heed: a change of one key never undoes another instance's change of a second. A file that is
// missing or damaged counts as empty and is replaced at the next change; one that is there and can't be read, is
// too large to be read or is no file of bytes (a folder, a device) is left alone, and what was read before stays
// known. A link is written through. A change that can't be written holds for this process and is written with
// the next one that can. So is one too large to be read back with the rest: the file keeps the key's older value
// or forgets it, as was asked, and other keys can be stored. Where the file can't be written anew, not even with the
// reserve, a value that is to go is crossed out: one byte of its key is written over in place, which takes no room.
// Values of kinds that settings don't have are kept as they are.
class FileDefaults final : public Defaults {
  public:
    // `path` is a path of the machine; its folder is made when the first value is stored. No file beyond the
    // limits is read or written. The reserve, if any, outlives the settings.
    explicit FileDefaults(std::string path, PropertyList::Limits limits = {},
                          SpaceReserve* reserve = nullptr);
    // The program's own file.
    static constexpr std::string_view kFileName = "defaults.plist";
    // A file of the user's by this name: below $XDG_CONFIG_HOME, else ~/.config.
    static std::string userPath(const std::string& home, std::string_view fileName = kFileName);

    std::optional<Value> value(std::string_view key) const override;
    void set(std::string_view key, Value value) override;
    void setOrForget(std::string_view key, Value value) override;
    void update(std::string_view key, Change change) override;
    void updateOrForget(std::string_view key, Change change) override;
    void clear(std::string_view key) override;
    bool hasLost() const override;
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
        Date modified;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    using Stored = std::map<std::string, PropertyList::Value, std::less<>>;
    // By key; nothing for what was taken away.
    using Changes = std::map<std::string, std::optional<PropertyList::Value>, std::less<>>;
    // What is to be in the file.
    struct Draft {
        Stored values;
        std::string text;
        Changes heldBack; // what had no room
    };

    // Nothing when it could not be told.
    std::optional<Stamp> stampOfFile() const;
    // False when the file is there and could not be read.
    bool reloadIfChanged() const;
    // The values of a file, but for those that are crossed out.
    Stored valuesIn(const std::string& bytes) const;
    // What becomes of the older value in the file when the new one can't be written.
    enum class Older { stays, goes };
    // False when there is nothing to change: where a change may leave the value as it is.
    enum class Basis { none, stored };
    bool change(const std::string& key, Change change, Older older, Basis basis);
    // As this process knows it: what is stored, or what is to be. No registered value.
    std::optional<Value> ownValue(std::string_view key) const;
    // The unwritten values, made of what is stored now.
    void makeAnew() const;
    // Writes what is unwritten and has room. False when nothing was written.
    bool store();
    bool write(const std::string& text) const;
    void crossOut(const std::string& key);
    // Nothing when none of the changes has room.
    std::optional<Draft> draft() const;
    // What is stored, but for the older values that are to go.
    Stored withoutMisleading() const;
    void tell(const std::string& key);

    std::string m_path;
    PropertyList::Limits m_limits;
    SpaceReserve* m_reserve;
    mutable Stored m_stored;
    mutable bool m_hasLost = false;
    mutable std::optional<Stamp> m_stamp = Stamp(); // of what is stored; nothing when it is not known
    // Not in the file yet: what is to become of its values, by key and in the order of telling, and what that comes to.
    // After many changes of a key it is the value that they come to, whatever another instance stores meanwhile.
    std::map<std::string, std::vector<Change>, std::less<>> m_told;
    mutable Changes m_unwritten;
    std::set<std::string, std::less<>> m_misleading; // of these, whose older values are to go
    std::map<std::string, Value, std::less<>> m_registered;
    std::map<SubscriptionId, std::function<void(const std::string&)>> m_subscribers;
    SubscriptionId m_lastSubscription = 0;
};

} // namespace quillane
