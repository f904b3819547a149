#pragma once

namespace quillane {

class Clock;
class CommandRunner;
class Defaults;
class DirectoryWatch;
class FileSystem;
class MenuBarExtra;
class Metadata;
class Power;
class PreviewPanel;
class Previews;
class RunningApplications;
class TaskRunner;
class Trash;
class Updater;
class UserNotifications;
class Workspace;

// What stands in a platform that names none of these: they do nothing, and have no state.
Previews& absentPreviews();
DirectoryWatch& absentDirectoryWatch();
UserNotifications& absentUserNotifications();
Power& absentPower();
MenuBarExtra& absentMenuBarExtra();
Updater& absentUpdater();
PreviewPanel& absentPreviewPanel();

// The ports of the program, bundled. Passed by const reference; there is no global. Whoever builds it owns
// the adapters and keeps them alive for as long as anything holds the bundle.
struct Platform {
    FileSystem& files;
    CommandRunner& commands;
    Metadata& metadata;
    Clock& clock;
    TaskRunner& tasks;
    Workspace& workspace;
    Trash& trash;
    RunningApplications& runningApplications;
    Defaults& defaults;
    Previews& previews = absentPreviews();
    DirectoryWatch& directories = absentDirectoryWatch();
    UserNotifications& notifications = absentUserNotifications();
    Power& power = absentPower();
    MenuBarExtra& menuBarExtra = absentMenuBarExtra();
    Updater& updater = absentUpdater();
    PreviewPanel& previewPanel = absentPreviewPanel();
};

} // namespace quillane
