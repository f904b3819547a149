#pragma once
#include "Defaults.h"
#include "RecentUninstall.h"
#include "UndoableOperation.h"
#include <optional>
#include <vector>

// The records that are kept as JSON. A date is a number, the seconds since 2001-01-01 UTC; a file URL is its
// absolute text; keys are named as the fields.
namespace quillane::StoredRecords {

// Nothing when a value can't be told in JSON (a date that is no number).
std::optional<Defaults::Data> encode(const UndoableOperation& operation);

// Nothing for data that is damaged, that lacks a field, or whose fields have other types. Unknown keys are
// ignored. Never throws.
std::optional<UndoableOperation> decodeUndoableOperation(const Defaults::Data& data);

// The list of removed applications, as one array. An absent identifier has no key, and may be missing or null
// on reading; every other field is required.
std::optional<Defaults::Data> encode(const std::vector<RecentUninstall>& records);
std::optional<std::vector<RecentUninstall>> decodeRecentUninstalls(const Defaults::Data& data);

} // namespace quillane::StoredRecords
