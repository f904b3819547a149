// Quillane on Linux: the window over this machine.
#include "BundleProcesses.h"
#include "CommandLine.h"
#include "DescriptorLimit.h"
#include "DesktopMenuBarExtra.h"
#include "DesktopNotifications.h"
#include "DesktopSession.h"
#include "DesktopStorage.h"
#include "DesktopThumbnails.h"
#include "DesktopWorkspace.h"
#include "DocumentText.h"
#include "DrawingProgram.h"
#include "EndSignals.h"
#include "FilePreviews.h"
#include "MessageBus.h"
#include "MetadataSearch.h"
#include "PosixCommandRunner.h"
#include "PosixDirectoryWatch.h"
#include "PowerProfile.h"
#include "ProgramUpdates.h"
#include "QuillaneApp.h"
#include "RecentlyUsedFiles.h"
#include "SearchingCommandRunner.h"
#include "SessionInstance.h"
#include "ThreadTaskRunner.h"
#include "UnheardNotice.h"
#include <QApplication>
#include <QFile>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace quillane;
    if (const auto code = DrawingProgram::answer(argc, argv)) {
        return *code;
    }
    if (const auto code = CommandLine::answer(argc, argv)) {
        return *code;
    }
    MessageBus::leaveStoppedSessionBus();
    SessionInstance instance(FileDefaults::userPath(PosixFileSystem().home().path()));
    if (const auto code = instance.endOfSecond(argc, argv)) {
        if (*code != EXIT_SUCCESS && UnheardNotice::isWanted()) {
            const QApplication application(argc, argv);
            UnheardNotice::show();
        }
        std::_Exit(*code); // a bus that has stopped is not waited for
    }
    DescriptorLimit::raise();
    QApplication application(argc, argv);
    DesktopSession session(application);
    DesktopStorage storage(session.clock());
    const auto& files = storage.files;
    RecentlyUsedFiles metadata(files, RecentlyUsedFiles::registryOfThisUser(files.home()));
    PosixCommandRunner programs;
    ThreadTaskRunner tasks(
        session.mainQueue()); // before what its jobs use, as nothing of this is ever destroyed
    const DocumentText documents(files, programs, session.clock());
    const MetadataSearch search(files, metadata, session.clock(), {files.home(), FileURL("/Applications")},
                                {.threads = &tasks, .documents = &documents});
    SearchingCommandRunner commands(files, search, programs);
    DesktopWorkspace workspace(files, tasks, DesktopWorkspace::Reach::machine);
    DesktopThumbnails thumbnails(ThumbnailStore(files, ThumbnailStore::folderOfThisUser(files.home())),
                                 session.clock());
    FilePreviews previews(
        files, programs, session.clock(), [](const FileURL& url) { return url.path(); },
        QFile::encodeName(QApplication::applicationFilePath()).toStdString(), &thumbnails);
    BundleProcesses running(files);
    PosixDirectoryWatch directories(tasks);
    DesktopNotifications notifications(tasks);
    PowerProfile power(tasks);
    DesktopMenuBarExtra menuBarExtra(tasks);
    ProgramUpdates updates(session.clock(), tasks, files.home().path());
    storage.keepRoom(tasks);
    session.followDesktop(tasks);

    QuillaneApp app({.files = storage.files,
                     .commands = commands,
                     .metadata = metadata,
                     .clock = session.clock(),
                     .tasks = tasks,
                     .workspace = workspace,
                     .trash = storage.trash,
                     .runningApplications = running,
                     .defaults = storage.defaults,
                     .previews = previews,
                     .directories = directories,
                     .notifications = notifications,
                     .power = power,
                     .menuBarExtra = menuBarExtra,
                     .updater = updates.updater()});
    updates.setOpening([&app](QWidget& window, bool isAskedFor) { app.countWindow(window, isAskedFor); });
    const EndSignals endSignals([&app] { app.quit(); });
    app.showWindow();
    instance.follow([&app](const SessionInstance::Request& request) {
        if (app.hasEnded()) {
            return false;
        }
        app.showWindow(request.activationToken);
        if (request.section) {
            app.notifications().post(NotificationName::kShowSection, request.section);
        }
        return true;
    });
    const int status = QApplication::exec();
    notifications.withdrawAll();
    // Work ends with the process: nobody who quits waits for a walk to come to its end. Everything that is
    // kept was written when it changed.
    std::_Exit(status);
}
