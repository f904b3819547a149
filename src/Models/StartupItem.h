#pragma once
#include "Bytes.h"
#include "FileURL.h"
#include "Hashing.h"
#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillane {

// Something that launchd starts by itself. Its identity is `url`.
struct StartupItem {
    // What it is, by the folder in which it lies.
    enum class Kind { agent, daemon, helper };
    enum class Health {
        ok,
        orphaned, // nothing that is installed owns it
        broken    // its program is gone, whoever owns it
    };

    FileURL url;       // the property list; of a helper the tool itself
    std::string label; // launchd's name for it; of a helper the file's name
    Kind kind = Kind::agent;
    // As the list has it, also with a leading "~"; absent when it names none. Of a helper its own path.
    std::optional<std::string> program;
    bool runAtLoad = false;
    bool keepAlive = false;
    std::optional<std::int64_t> interval; // in seconds, as the list has it
    std::optional<std::string> ownerName; // to be shown; absent when nobody claims it
    Health health = Health::ok;
    std::optional<bool> isLoaded; // whether launchd has it now; known of agents in the home folder alone
    Bytes bytes = 0;              // the length of the list; of a helper what it takes on disk

    const FileURL& id() const { return url; }
    // Whether it lies in the user's own folder, by the text of its path: what does not needs administrator rights to go.
    bool isAtHome(const FileURL& home) const { return url.path().starts_with(home.path()); }
    // When it runs: "at login, every 1 hr", or "on demand" for what nothing starts by itself.
    std::string schedule() const;

    friend bool operator==(const StartupItem&, const StartupItem&) = default;
};

inline constexpr std::array kAllStartupItemKinds = {StartupItem::Kind::agent, StartupItem::Kind::daemon,
                                                    StartupItem::Kind::helper};
inline constexpr std::array kAllStartupItemHealths = {StartupItem::Health::ok, StartupItem::Health::orphaned,
                                                      StartupItem::Health::broken};

// The labels, such as "Privileged Helper" and "Orphaned".
std::string_view rawValue(StartupItem::Kind kind);
std::string_view rawValue(StartupItem::Health health);

// Ordered by the labels.
std::strong_ordering operator<=>(StartupItem::Kind a, StartupItem::Kind b);
// The worst comes first.
std::strong_ordering operator<=>(StartupItem::Health a, StartupItem::Health b);

} // namespace quillane

template <>
struct std::hash<quillane::StartupItem> {
    std::size_t operator()(const quillane::StartupItem& item) const noexcept {
        return quillane::hashOf(item.url, item.label, item.kind, item.program, item.runAtLoad, item.keepAlive,
                                item.interval, item.ownerName, item.health, item.isLoaded, item.bytes);
    }
};
