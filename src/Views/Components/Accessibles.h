#pragma once

namespace quillane {

// From now on assistive tools meet cards as groups, and each statistic and each row of a list as one thing: its name
// holds the words of its labels, so the labels are not met again. Every such class calls it; once is enough.
void installAccessibles();

} // namespace quillane
