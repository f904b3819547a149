#pragma once
#include "Bytes.h"
#include "Calendar.h"
#include "Date.h"
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillane::Formatting {

// A byte count as every screen prints it: decimal units, "Zero KB", "999 KB", "1.5 MB", "12.35 GB".
std::string byteCount(Bytes bytes);
// The same with only MB and GB, and "0 MB" for zero: the label of the menu bar extra.
std::string byteCountInMegabytesOrGigabytes(Bytes bytes);
// A last use: "Never" when absent, else the platform's named, wide relative style ("last week").
std::string relativeDescription(const std::optional<Date>& date, Date now, const Calendar& calendar);
// A whole number with grouped thousands: "1,234".
std::string number(std::int64_t value);
// The number and its noun in agreement: counted(1, "app") is "1 app", counted(2, "app") "2 apps",
// counted(1234, "app") "1,234 apps". The plural is the noun with an s.
std::string counted(std::int64_t value, std::string_view noun);
// A length of time in its non-zero parts: "1 hr, 30 min", "5 min", "0 sec"; hours are never days. A negative
// one shows its sign once, in front.
std::string duration(std::int64_t seconds);

} // namespace quillane::Formatting
