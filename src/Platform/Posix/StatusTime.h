#pragma once
#include "Date.h"
#include <sys/stat.h>

namespace quillane {

// When the content was modified last. Systems name the field differently.
Date modifiedOf(const struct stat& status);

} // namespace quillane
