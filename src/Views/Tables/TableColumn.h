#pragma once
#include <vector>

namespace quillane {

// How wide a column of a table is, and how it gives way.
struct TableColumn {
    int width = 100;        // at the usual size of the window
    int narrowest = 0;      // may be cut down to this when space is short; 0: never cut
    int narrowRank = 0;     // columns that may be cut give way in this order, smallest first
    bool stretches = false; // takes what the others leave, and never falls under `width`
    int widest = 0;         // limit of a stretching column; 0: none, else the rest stays empty
};

// The widths of all columns in a table that is `available` wide. The stretching columns share what is left in
// equal parts; when they would fall under their width the others are cut, in the order of their ranks, and
// what is missing then is taken from the stretching ones, so that the sum never exceeds `available` unless
// even that does not suffice.
std::vector<int> columnWidths(const std::vector<TableColumn>& columns, int available);

} // namespace quillane
