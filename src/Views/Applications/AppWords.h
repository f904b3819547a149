#pragma once
#include "Components/Tint.h"
#include "InstalledApp.h"
#include <QString>
#include <optional>

namespace quillane {

class Clock;

// How applications are told, in the table and in the panes alike.
namespace AppWords {

// Whole days without use from which on an application counts as unused for half a year.
inline constexpr int kUnusedDays = 181;
// Above this a size stands in primary colour.
inline constexpr Bytes kLargeBytes = 1'000'000'000;

QString architectureSymbol(Architecture architecture);
Tint architectureTint(Architecture architecture);

Tint sizeTint(Bytes totalBytes);

QString lastUsed(const std::optional<Date>& date, const Clock& clock);
// Orange when the last use is missing or at least kUnusedDays ago.
Tint lastUsedTint(const std::optional<Date>& date, const Clock& clock);

// What stands for a value that is absent.
QString orDash(const std::optional<std::string>& value);

// "1 app selected"
QString selectedCount(std::size_t count);

} // namespace AppWords
} // namespace quillane
