#include "Applications/AppWords.h"
#include "Clock.h"
#include "Components/ShownText.h"
#include "Formatting.h"

namespace quillane::AppWords {

QString architectureSymbol(Architecture architecture) {
    switch (architecture) {
    case Architecture::universal:
        return QStringLiteral("checkmark.seal");
    case Architecture::appleSilicon:
        return QStringLiteral("cpu");
    case Architecture::intel:
        return QStringLiteral("arrow.triangle.2.circlepath");
    case Architecture::intel32:
    case Architecture::powerPC:
        return QStringLiteral("exclamationmark.triangle");
    case Architecture::unknown:
        return QStringLiteral("questionmark.circle");
    }
    __builtin_unreachable();
}

Tint architectureTint(Architecture architecture) {
    if (isDead(architecture)) {
        return Tint::Red;
    }
    return architecture == Architecture::intel ? Tint::Orange : Tint::Secondary;
}

Tint sizeTint(Bytes totalBytes) {
    return totalBytes > kLargeBytes ? Tint::Text : Tint::Secondary;
}

QString lastUsed(const std::optional<Date>& date, const Clock& clock) {
    return words(Formatting::relativeDescription(date, clock.now(), clock.calendar()));
}

Tint lastUsedTint(const std::optional<Date>& date, const Clock& clock) {
    return !date || clock.calendar().daysBetween(*date, clock.now()) >= kUnusedDays ? Tint::Orange
                                                                                    : Tint::Text;
}

QString orDash(const std::optional<std::string>& value) {
    return value ? shownName(*value) : QStringLiteral("—");
}

QString selectedCount(std::size_t count) {
    return words(Formatting::counted(static_cast<std::int64_t>(count), "app")) + QStringLiteral(" selected");
}

} // namespace quillane::AppWords
