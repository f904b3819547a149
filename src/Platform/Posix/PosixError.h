#pragma once
#include "Result.h"

// errno in the platform's own codes.
namespace quillane::PosixError {

// For reading, listing and asking.
PlatformError reading(int error);
// For writing, moving, removing and creating.
PlatformError writing(int error);

} // namespace quillane::PosixError
