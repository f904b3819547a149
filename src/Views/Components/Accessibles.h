#pragma once

namespace quillane {

// From now on assistive tools meet cards, panes and whatever else has a name as groups, a drawing with a name as a
// picture, a window as such, a popover as a dialog, a sheet as one that blocks, and each statistic, each row of a list
// and each badge as one thing: its name holds the words of its labels, so the labels are not met again. Before the
// first widget is made, as what is met before stays what it was.
void installAccessibles();

} // namespace quillane
