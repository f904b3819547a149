#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace quillane::TrashNames {

// The name to try at the given attempt, from 0 on: the name itself, then "name 2.ext", "name 3.ext", ... with
// the extension kept. Never longer than `limit` bytes: the stem is cut, at a whole UTF-8 character where it is
// one. Never empty.
std::string candidate(std::string_view name, int attempt, std::size_t limit);

} // namespace quillane::TrashNames
