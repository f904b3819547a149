#pragma once
#include "Bytes.h"

namespace quillane::TrashSweeper {

// What is known of the user's Trash.
struct State {
    bool needsFullDiskAccess = false; // the listing was refused; the figures are then 0
    Bytes bytes = 0;
    int count = 0; // top-level items, as the user sees them in the Trash

    static State measured(Bytes bytes, int count) { return {false, bytes, count}; }
    static State refused() { return {true, 0, 0}; }
    friend bool operator==(const State&, const State&) = default;
};

} // namespace quillane::TrashSweeper
