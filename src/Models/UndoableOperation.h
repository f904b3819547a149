#pragma once
#include "Bytes.h"
#include "Date.h"
#include "UninstallerReport.h"
#include <string>
#include <vector>

namespace quillane {

// The record of the last sweep: what "Put Back" needs, also after a restart.
struct UndoableOperation {
    std::string label;            // shown after "Last cleanup: "
    Date date;                    // when the sweep finished its last move
    std::vector<TrashMove> moves; // everything that can go back
    Bytes bytes = 0;              // the sweep's total less what emptying the Trash reclaimed
    friend bool operator==(const UndoableOperation&, const UndoableOperation&) = default;
};

} // namespace quillane
