#pragma once
#include <QString>

class QWidget;

namespace quillane {

// The text of a tooltip that shows these words as they stand, line by line. Qt guesses from its text whether a
// tooltip is HTML, so a name with a tag in it would be obeyed, and an escaped name without one be shown escaped.
// Empty for no words: no tooltip.
QString toolTipText(const QString& plain);
// Gives the widget such a tooltip. Assistive tools read the words without the tags.
void setToolTipText(QWidget& widget, const QString& plain);

} // namespace quillane
