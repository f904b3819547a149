#include "LeftoverItem.h"

namespace quillane {

std::string_view rawValue(LeftoverItem::Confidence confidence) {
    return confidence == LeftoverItem::Confidence::high ? "Bundle ID" : "Name";
}

} // namespace quillane
