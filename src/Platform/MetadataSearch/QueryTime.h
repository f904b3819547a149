#pragma once
#include "Date.h"
#include <optional>
#include <string_view>

namespace quillane {

// Reads what a query writes for a point in time, with `now` for the present and days, weeks, months and years
// of the process's time zone (weeks begin on Sunday): "$time.now", "$time.today", "$time.yesterday",
// "$time.this_week", "$time.this_month", "$time.this_year", each with a number of its own unit in brackets or
// without ("$time.now(-3600)", "$time.today(-7)"), and "$time.iso(2024-01-02T00:00:00Z)", whose time of day
// and zone letter may be left out and which then is UTC. Nothing for anything else.
std::optional<Date> queryTime(std::string_view text, Date now);

} // namespace quillane
