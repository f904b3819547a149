#pragma once
#include "AppKitStatusItem.h"
#include "ItemIcon.h"
#include "MacMenuBarExtra.h"
#include "MacNotifications.h"
#include "MacPower.h"
#include "UserNotificationCentre.h"
#include "Workspace.h"
#include <QCoreApplication>
#include <QProcess>
#include <memory>

// What the sample takes from the desktop that it runs on, which knows nothing of the items of its volume.
namespace quillane::SampleDesktop {

class VolumeWorkspace final : public Workspace {
  public:
    // The files outlive it.
    explicit VolumeWorkspace(const FileSystem& files)
        : m_files(files) {}
    std::shared_ptr<const IconImage> icon(const FileURL& url, int side) override {
        return itemIcon(m_files, url, side);
    }
    void open(const FileURL&) override {}
    void reveal(const std::vector<FileURL>&) override {}
    void openFullDiskAccessSettings() override {}
    void relaunch() override {
        QProcess::startDetached(QCoreApplication::applicationFilePath(), {QString::fromLatin1(kRelaunched)});
        QCoreApplication::quit();
    }

  private:
    const FileSystem& m_files;
};

inline std::unique_ptr<Workspace> workspace(const FileSystem& files, TaskRunner& /*tasks*/) {
    return std::make_unique<VolumeWorkspace>(files);
}

inline std::unique_ptr<Power> power(TaskRunner& /*tasks*/) {
    return std::make_unique<MacPower>();
}

// Where the sample shows itself beside its windows.
struct Signs {
    explicit Signs(TaskRunner& tasks)
        : notifications(tasks, makeNotificationCentre)
        , menuBarExtra(tasks, makeStatusItem) {}

    MacNotifications notifications;
    MacMenuBarExtra menuBarExtra;
};

} // namespace quillane::SampleDesktop
