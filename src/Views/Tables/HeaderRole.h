#pragma once
#include <QtGlobal>

namespace quillane {

// What a model may tell HeaderView about a column beyond Qt's own roles.
enum HeaderRole : int {
    kSortableRole = Qt::UserRole + 200, // bool: a click on it sorts; absent: it does
};

} // namespace quillane
