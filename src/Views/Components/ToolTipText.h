#pragma once
#include <QString>

namespace quillane {

// The text of a tooltip that shows these words as they stand, line by line. Qt guesses from its text whether a
// tooltip is HTML, so a name with a tag in it would be obeyed, and an escaped name without one be shown escaped.
// Empty for no words: no tooltip.
QString toolTipText(const QString& plain);

} // namespace quillane
