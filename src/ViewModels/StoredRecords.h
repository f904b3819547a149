#pragma once
#include "Bytes.h"
#include "Defaults.h"
#include "RecentUninstall.h"
#include "UndoableOperation.h"
#include <optional>
#include <vector>

// The records that are kept as JSON. A date is a number, the seconds since 2001-01-01 UTC; a file URL is its
// absolute text; keys are named as the fields.
namespace quillane::StoredRecords {

// The most that the byte counts of one stored value may come to: 2 to the 60, an eighth of what sums can take and
// more than any disk holds. Stored figures are nobody's word: on reading a negative one counts as 0, and one that
// leads beyond this as what is left. The rest of the record stays, as what can be put back does not hang on a figure.
inline constexpr Bytes kMostStoredBytes = Bytes{1} << 60U;

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
