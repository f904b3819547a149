#include "RelaunchTrial.h"
#include "DesktopWorkspace.h"
#include "PosixFileSystem.h"
#include "SessionInstance.h"
#include "StepTaskRunner.h"
#include "Workspace.h"
#include <QCoreApplication>
#include <QTimer>
#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace quillane::RelaunchTrial {
namespace {

void tell(std::string_view line) {
    (void)!::write(STDOUT_FILENO, line.data(), line.size());
}

void relaunchAndQuit(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const PosixFileSystem files;
    StepTaskRunner tasks;
    DesktopWorkspace workspace(files, tasks, DesktopWorkspace::Reach::machine);
    QTimer::singleShot(0, &application, [&] { workspace.relaunch(); });
    QCoreApplication::exec();
    char end = 0;
    while (::read(STDIN_FILENO, &end, 1) > 0) {
    }
}

} // namespace

std::optional<int> answer(int argc, char** argv) {
    const char* settings = std::getenv(kSettings);
    if (settings == nullptr) {
        return std::nullopt;
    }
    const bool isAgain = argc > 1 && std::string_view(argv[1]) == Workspace::kRelaunched;
    tell(isAgain ? "began again\n" : "began\n");
    SessionInstance instance(settings, [] { return QDBusConnection(QStringLiteral("never connected")); });
    const auto status = instance.endOfSecond(argc, argv);
    tell(!status ? "first\n" : *status == EXIT_SUCCESS ? "second\n" : "unheard\n");
    if (!isAgain && !status) {
        relaunchAndQuit(argc, argv);
    }
    return status.value_or(EXIT_SUCCESS);
}

} // namespace quillane::RelaunchTrial
