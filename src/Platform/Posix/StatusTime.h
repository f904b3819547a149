#pragma once
#include "Date.h"
#include <sys/stat.h>

namespace quillane {

// When the content was modified last, as far as anybody claims. Systems name the fields differently.
Date modifiedOf(const struct stat& status);
// When anything of it changed last, its place and its name among it: nobody can claim another time.
Date changedOf(const struct stat& status);

} // namespace quillane
