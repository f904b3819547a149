#include "Tables/CellData.h"
#include "Clock.h"
#include "Components/ShownText.h"
#include "Components/Tint.h"
#include "Formatting.h"
#include "Tables/TableRole.h"
#include <cstdint>
#include <string>

namespace quillane::CellData {

namespace {

QVariant figure(const std::string& text, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return words(text);
    case kTabularRole:
        return true;
    default:
        return {};
    }
}

} // namespace

QVariant size(Bytes bytes, int role) {
    return figure(Formatting::byteCount(bytes), role);
}

QVariant count(std::size_t value, int role) {
    return figure(Formatting::number(static_cast<std::int64_t>(value)), role);
}

QVariant lastTouched(const std::optional<Date>& date, const Clock& clock, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return words(Formatting::relativeDescription(date, clock.now(), clock.calendar()));
    case kTintRole:
        return static_cast<int>(Tint::Secondary);
    default:
        return {};
    }
}

} // namespace quillane::CellData
