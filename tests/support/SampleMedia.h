#pragma once
#include "Bytes.h"
#include <string>

namespace quillane::SampleMedia {

// Rain, mono, 16 bits, 22,050 samples in a second.
std::string wave(double seconds);
// The beginning of a movie of that length: the boxes that say what it is and how long its data are. There are no
// pictures in it and nothing plays it; what counts for us is its length and its name.
std::string movieHead(Bytes length);

} // namespace quillane::SampleMedia
