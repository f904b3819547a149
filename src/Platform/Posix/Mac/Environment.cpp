#include "Environment.h"
#include <crt_externs.h>

namespace quillane::Environment {

// A library of this system has no such variable of its own.
char** ofThisProcess() {
    return *::_NSGetEnviron();
}

} // namespace quillane::Environment
