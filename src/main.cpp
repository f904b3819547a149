// Quillane on Linux: the window over this machine.
#include "BundleProcesses.h"
#include "DesktopSession.h"
#include "DesktopWorkspace.h"
#include "FileDefaults.h"
#include "FreedesktopTrash.h"
#include "MetadataSearch.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "QuillaneApp.h"
#include "RecentlyUsedFiles.h"
#include "SearchingCommandRunner.h"
#include "SpaceReserve.h"
#include "ThreadTaskRunner.h"
#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
    using namespace quillane;
    QApplication application(argc, argv);
    DesktopSession session(application);
    PosixFileSystem files;
    RecentlyUsedFiles metadata(files, RecentlyUsedFiles::registryOfThisUser(files.home()));
    PosixCommandRunner programs;
    const MetadataSearch search(files, metadata, session.clock(), {files.home(), FileURL("/Applications")});
    SearchingCommandRunner commands(files, search, programs);
    ThreadTaskRunner tasks(session.mainQueue());
    DesktopWorkspace workspace(files, tasks, DesktopWorkspace::Reach::machine);
    const auto settings = FileDefaults::userPath(files.home().path());
    SpaceReserve reserve(settings + ".reserve");
    files.drawOn(reserve);
    FreedesktopTrash trash(FreedesktopTrash::Places::ofThisUser(files.home()), session.clock(), &reserve);
    BundleProcesses running(files);
    FileDefaults defaults(settings, {}, &reserve);
    tasks.run(Priority::background, [&reserve] { (void)reserve.lay(); });
    session.followDesktop(tasks);

    QuillaneApp app({.files = files,
                     .commands = commands,
                     .metadata = metadata,
                     .clock = session.clock(),
                     .tasks = tasks,
                     .workspace = workspace,
                     .trash = trash,
                     .runningApplications = running,
                     .defaults = defaults});
    app.showWindow();
    // Work ends with the process: nobody who quits waits for a walk to come to its end. Everything that is
    // kept was written when it changed.
    std::_Exit(QApplication::exec());
}
