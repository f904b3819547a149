#pragma once
#include "FileURL.h"
#include "Result.h"
#include <optional>
#include <string>

// Where the records of a Trash say that its items came from.
namespace quillane::TrashOrigin {

// The place that the record of an item names. `trash` is the open Trash, `name` that of the item, and `holder` the
// folder in which the Trash stands, or the top of its volume: records may name places below that. Nothing when there
// is no record, or none that names a place. Fails when the record can't be read; a link in its place is not followed.
Result<std::optional<FileURL>> recorded(int trash, const std::string& name, const FileURL& holder);

// Whether two locations are one place by now. Links above the last component are followed, folders that are missing
// are taken as text.
bool isSamePlace(const FileURL& a, const FileURL& b);

} // namespace quillane::TrashOrigin
