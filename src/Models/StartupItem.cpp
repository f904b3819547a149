#include "StartupItem.h"
#include "Formatting.h"

namespace quillane {

std::string StartupItem::schedule() const {
    std::string text;
    const auto add = [&text](const std::string& part) {
        text += text.empty() ? "" : ", ";
        text += part;
    };
    if (runAtLoad) {
        add(kind == Kind::daemon ? "at boot" : "at login");
    }
    if (keepAlive) {
        add("kept alive");
    }
    if (interval) {
        add("every " + Formatting::duration(*interval));
    }
    return text.empty() ? "on demand" : text;
}

std::string_view rawValue(StartupItem::Kind kind) {
    switch (kind) {
    case StartupItem::Kind::agent:
        return "Agent";
    case StartupItem::Kind::daemon:
        return "Daemon";
    case StartupItem::Kind::helper:
        return "Privileged Helper";
    }
    __builtin_unreachable();
}

std::string_view rawValue(StartupItem::Health health) {
    switch (health) {
    case StartupItem::Health::ok:
        return "OK";
    case StartupItem::Health::orphaned:
        return "Orphaned";
    case StartupItem::Health::broken:
        return "Broken";
    }
    __builtin_unreachable();
}

std::strong_ordering operator<=>(StartupItem::Kind a, StartupItem::Kind b) {
    return rawValue(a) <=> rawValue(b);
}

std::strong_ordering operator<=>(StartupItem::Health a, StartupItem::Health b) {
    return static_cast<int>(b) <=> static_cast<int>(a);
}

} // namespace quillane
