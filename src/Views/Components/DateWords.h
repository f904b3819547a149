#pragma once

class QEvent;

namespace quillane {

// Words for dates, such as "yesterday" or "8 days ago", go by the clock and the time zone, which no part of the
// library observes. Who shows them shows them anew after each event that this names: back in sight or in front,
// and when tellDateWordsMayDiffer() has been called.
bool dateWordsMayDiffer(const QEvent& event);

// Tells every widget, at the next turn, that words for dates may read otherwise. For changes that are known at
// once, such as another time zone. Main thread only.
void tellDateWordsMayDiffer();

} // namespace quillane
