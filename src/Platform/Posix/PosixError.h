#pragma once
#include "Result.h"

namespace quillane {

// What was being tried; the platform has different codes for the two.
enum class Attempt {
    reading, // reading, listing, asking for properties
    writing  // writing, moving, removing, creating
};

// The platform's error for an errno. The one place where errno is translated.
PlatformError posixError(int errnoValue, Attempt attempt);

} // namespace quillane
