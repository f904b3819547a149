#pragma once
#include "Bytes.h"
#include "Date.h"
#include <QVariant>
#include <cstddef>
#include <optional>

namespace quillane {

class Clock;

// Cells that more than one table shows, by role; see TableRole.
namespace CellData {

// A byte count at the right.
QVariant size(Bytes bytes, int role);
// A number at the right.
QVariant count(std::size_t value, int role);
// A date in words relative to now, quietly.
QVariant lastTouched(const std::optional<Date>& date, const Clock& clock, int role);

} // namespace CellData
} // namespace quillane
