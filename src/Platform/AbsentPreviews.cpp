#include "AbsentPreviews.h"
#include "Platform.h"

namespace quillane {

Previews& absentPreviews() {
    static AbsentPreviews previews;
    return previews;
}

} // namespace quillane
