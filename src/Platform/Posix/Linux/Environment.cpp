#include "Environment.h"
#include <unistd.h>

namespace quillane::Environment {

char** ofThisProcess() {
    return environ;
}

} // namespace quillane::Environment
