#pragma once
#include "DesktopMenuBarExtra.h"
#include "DesktopNotifications.h"
#include "DesktopWorkspace.h"
#include "PowerProfile.h"
#include <memory>

// What the sample takes from the desktop that it runs on, which knows nothing of the items of its volume.
namespace quillane::SampleDesktop {

inline std::unique_ptr<Workspace> workspace(const FileSystem& files, TaskRunner& tasks) {
    return std::make_unique<DesktopWorkspace>(files, tasks, DesktopWorkspace::Reach::volume);
}

inline std::unique_ptr<Power> power(TaskRunner& tasks) {
    return std::make_unique<PowerProfile>(tasks);
}

// Where the sample shows itself beside its windows.
struct Signs {
    explicit Signs(TaskRunner& tasks)
        : notifications(tasks)
        , menuBarExtra(tasks) {}
    ~Signs() { notifications.withdrawAll(); }
    Signs(const Signs&) = delete;
    Signs& operator=(const Signs&) = delete;

    DesktopNotifications notifications;
    DesktopMenuBarExtra menuBarExtra;
};

} // namespace quillane::SampleDesktop
