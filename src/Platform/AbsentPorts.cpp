#include "AbsentPorts.h"
#include "AbsentPreviews.h"
#include "Platform.h"

namespace quillane {

Previews& absentPreviews() {
    static AbsentPreviews previews;
    return previews;
}

DirectoryWatch& absentDirectoryWatch() {
    static AbsentDirectoryWatch directories;
    return directories;
}

UserNotifications& absentUserNotifications() {
    static AbsentUserNotifications notifications;
    return notifications;
}

Power& absentPower() {
    static AbsentPower power;
    return power;
}

MenuBarExtra& absentMenuBarExtra() {
    static AbsentMenuBarExtra item;
    return item;
}

Updater& absentUpdater() {
    static AbsentUpdater updater;
    return updater;
}

PreviewPanel& absentPreviewPanel() {
    static AbsentPreviewPanel panel;
    return panel;
}

} // namespace quillane
