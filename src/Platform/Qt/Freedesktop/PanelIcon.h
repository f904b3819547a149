#pragma once
#include "NotifierPixmap.h"
#include <QIcon>
#include <QString>

namespace quillane::PanelIcon {

// The name of the icon in the desktop's theme, for a panel that gives it the colour of its own words; empty where the
// desktop is none whose panel does, or the theme has no such icon. Main thread.
QString themeName();

// The same in a colour of its own, which can be seen on a light ground and on a dark one: 22 pixels wide, and 44.
NotifierPixmaps pixmaps();
QIcon icon(); // main thread

} // namespace quillane::PanelIcon
