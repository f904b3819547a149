// Quillane on macOS: the window over this machine.
#include "AppKitStatusItem.h"
#include "CommandLine.h"
#include "DescriptorLimit.h"
#include "DesktopSession.h"
#include "EndSignals.h"
#include "MacInstance.h"
#include "MacMenuBarExtra.h"
#include "MacNotifications.h"
#include "MacPower.h"
#include "MacPreviewPanel.h"
#include "MacPreviews.h"
#include "MacStorage.h"
#include "MacWorkspace.h"
#include "PosixCommandRunner.h"
#include "PosixDirectoryWatch.h"
#include "ProgramUpdates.h"
#include "QuillaneApp.h"
#include "SpotlightMetadata.h"
#include "ThreadTaskRunner.h"
#include "UserNotificationCentre.h"
#include "WorkspaceApplications.h"
#include <QApplication>
#include <algorithm>
#include <cstdlib>
#include <string_view>

int main(int argc, char** argv) {
    using namespace quillane;
    if (const auto code = CommandLine::answer(argc, argv)) {
        return *code;
    }
    const bool isRelaunched = std::any_of(
        argv, argv + argc, [](std::string_view argument) { return argument == Workspace::kRelaunched; });
    if (MacInstance::bringOtherForward(isRelaunched)) {
        return EXIT_SUCCESS;
    }
    DescriptorLimit::raise();
    QApplication application(argc, argv);
    DesktopSession session(application);
    MacStorage storage;
    SpotlightMetadata metadata;
    PosixCommandRunner commands;
    ThreadTaskRunner tasks(
        session.mainQueue()); // before what its jobs use, as nothing of this is ever destroyed
    MacWorkspace workspace(tasks, commands);
    MacPreviews previews(session.clock());
    MacPreviewPanel previewPanel(tasks);
    WorkspaceApplications running;
    PosixDirectoryWatch directories(tasks);
    MacNotifications notifications(tasks,
                                   makeNotificationCentre); // before the application has finished launching
    MacPower power;
    MacMenuBarExtra menuBarExtra(tasks, makeStatusItem);
    ProgramUpdates updates(session.clock(), tasks, storage.files.home().path());
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
                     .updater = updates.updater(),
                     .previewPanel = previewPanel});
    app.liveInDock();
    const EndSignals endSignals([&app] { app.quit(); });
    app.showWindow();
    const int status = QApplication::exec();
    // Work ends with the process: nobody who quits waits for a walk to come to its end. Everything that is
    // kept was written when it changed.
    std::_Exit(status);
}
