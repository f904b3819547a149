#include "AppSource.h"

namespace quillane {

std::string_view rawValue(AppSource source) {
    switch (source) {
    case AppSource::system:
        return "System";
    case AppSource::applications:
        return "Applications";
    case AppSource::userApplications:
        return "User";
    case AppSource::other:
        return "Other";
    }
    __builtin_unreachable();
}

std::optional<AppSource> appSourceFromRawValue(std::string_view text) {
    for (const auto source : kAllAppSources) {
        if (rawValue(source) == text) {
            return source;
        }
    }
    return std::nullopt;
}

std::strong_ordering operator<=>(AppSource a, AppSource b) {
    return rawValue(a) <=> rawValue(b);
}

} // namespace quillane
