#pragma once
#include "AbsentCommandRunner.h"
#include "DesktopSession.h"
#include "DocumentText.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FilePreviews.h"
#include "FolderTrash.h"
#include "MemoryDefaults.h"
#include "MenuBarExtra.h"
#include "MetadataSearch.h"
#include "Platform.h"
#include "PosixCommandRunner.h"
#include "PosixDirectoryWatch.h"
#include "PosixFileSystem.h"
#include "SampleDesktop.h"
#include "SampleLaunchctl.h"
#include "SampleMac.h"
#include "SearchingCommandRunner.h"
#include "ThreadTaskRunner.h"
#include "UserNotifications.h"
#include <QCoreApplication>
#include <QFile>
#include <memory>
#include <string>

namespace quillane {

// The ports of the sample. The runner comes after what its jobs use, so that they have ended when that goes; what only
// posts to it comes after it.
class SampleSession {
  public:
    SampleSession(DesktopSession& session, const SampleMac& mac, const std::string& hostFolder)
        : m_session(session)
        , m_files(hostFolder, FileURL(std::string(SampleMac::kHome)))
        , m_launchctl(mac.loadedLabels(), m_programs)
        , m_trash(hostFolder, FileURL(std::string(SampleMac::kHome)))
        , m_tasks(session.mainQueue()) {
        mac.build(hostFolder);
        for (const auto& [path, date] : mac.lastUses()) {
            m_metadata.setLastUsed(FileURL(path), date);
        }
        session.followDesktop(m_tasks);
    }
    ~SampleSession() { m_session.stopFollowing(); }
    SampleSession(const SampleSession&) = delete;
    SampleSession& operator=(const SampleSession&) = delete;

    TaskRunner& tasks() { return m_tasks; }
    // These outlive whoever uses the platform.
    Platform platform(UserNotifications& notifications, MenuBarExtra& menuBarExtra) {
        return {.files = m_files,
                .commands = m_commands,
                .metadata = m_metadata,
                .clock = m_session.clock(),
                .tasks = m_tasks,
                .workspace = *m_workspace,
                .trash = m_trash,
                .runningApplications = m_running,
                .defaults = m_defaults,
                .previews = m_previews,
                .directories = m_directories,
                .notifications = notifications,
                .power = *m_power,
                .menuBarExtra = menuBarExtra};
    }

  private:
    DesktopSession& m_session;
    PosixFileSystem m_files;
    FakeMetadata m_metadata;
    AbsentCommandRunner m_programs;
    SampleLaunchctl m_launchctl;
    PosixCommandRunner m_viewers; // of documents: the machine's own, for there are none in the sample
    DocumentText m_documents{m_files, m_viewers, m_session.clock(),
                             [this](const FileURL& url) { return m_files.hostPath(url); }};
    MetadataSearch m_search{m_files,
                            m_metadata,
                            m_session.clock(),
                            {FileURL("/")},
                            {.threads = &m_tasks, .documents = &m_documents}};
    SearchingCommandRunner m_commands{m_files, m_search, m_launchctl};
    std::unique_ptr<Workspace> m_workspace = SampleDesktop::workspace(m_files, m_tasks);
    FolderTrash m_trash;
    FakeRunningApplications m_running;
    MemoryDefaults m_defaults;
    FilePreviews m_previews{m_files, m_viewers, m_session.clock(),
                            [this](const FileURL& url) { return m_files.hostPath(url); },
                            QFile::encodeName(QCoreApplication::applicationFilePath()).toStdString()};
    ThreadTaskRunner m_tasks;
    PosixDirectoryWatch m_directories{m_tasks, [this](const FileURL& folder) {
                                          return m_files.hostPath(m_files.resolvingSymlinks(folder));
                                      }};
    std::unique_ptr<Power> m_power = SampleDesktop::power(m_tasks);
};

} // namespace quillane
