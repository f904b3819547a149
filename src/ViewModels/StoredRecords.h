#pragma once
#include "Defaults.h"
#include "UndoableOperation.h"
#include <optional>

// The records that are kept as JSON. A date is a number, the seconds since 2001-01-01 UTC; a file URL is its
// absolute text; keys are named as the fields.
namespace quillane::StoredRecords {

// Nothing when a value can't be told in JSON (a date that is no number).
std::optional<Defaults::Data> encode(const UndoableOperation& operation);

// Nothing for data that is damaged, that lacks a field, or whose fields have other types. Unknown keys are
// ignored. Never throws.
std::optional<UndoableOperation> decodeUndoableOperation(const Defaults::Data& data);

} // namespace quillane::StoredRecords
