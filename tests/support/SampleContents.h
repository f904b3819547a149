#pragma once
#include "Bytes.h"

namespace quillane {

class SampleMac;

// Sizes are told in megabytes as the full Mac has them; the small one divides them.
struct SampleScale {
    Bytes divisor = 1;
    Bytes operator()(double megabytesOfTheFullMac) const {
        return static_cast<Bytes>(megabytesOfTheFullMac * 1e6) / divisor;
    }
    bool isFull() const { return divisor == 1; }
};

namespace SampleContents {

// What a person has of their own: for each lens, for the search and for the finder of copies something that it must
// find and something that it must not, and beside it the table of what must be found.
void addOwnFiles(SampleMac& mac, SampleScale mb);

// Lays what starts by itself on a Mac that has its applications already: each kind, health and owner, what launchd has
// loaded of it, and what only looks like it.
void addStartupItems(SampleMac& mac);

} // namespace SampleContents
} // namespace quillane
