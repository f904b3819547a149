#include "StatusFlags.h"

namespace quillane {

// Only names hide here.
bool isFlaggedHidden(const struct stat& /*status*/) {
    return false;
}

} // namespace quillane
