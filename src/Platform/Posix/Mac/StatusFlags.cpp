#include "StatusFlags.h"

namespace quillane {

bool isFlaggedHidden(const struct stat& status) {
    return (status.st_flags & UF_HIDDEN) != 0;
}

} // namespace quillane
