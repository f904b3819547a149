// The window over a sample Mac, which is laid beside this program and goes with it. As at a first launch it begins
// with the welcome, unless started with --welcomed. With `--applications COUNT` that many applications are all there is.
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "DrawingProgram.h"
#include "QuillaneApp.h"
#include "SampleSession.h"
#include "Shell/ContentView.h"
#include "TreeRemoval.h"
#include <QApplication>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <csignal>
#include <string>
#include <unistd.h>

namespace quillane {
namespace {

int g_interrupts[2] = {-1, -1}; // a pipe: all that a signal handler may touch

// Leaves by the ordinary way when interrupted, so that the volume goes too.
void quitOnInterrupt(QApplication& application) {
    if (::pipe(g_interrupts) != 0) {
        return;
    }
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(number,
                    [](int) { [[maybe_unused]] const auto written = ::write(g_interrupts[1], "", 1); });
    }
    auto* const notifier = new QSocketNotifier(g_interrupts[0], QSocketNotifier::Read, &application);
    QObject::connect(notifier, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
}

// Takes what lies in a folder with it. Qt leaves names behind that are no text.
struct TreeOwner {
    std::string path;
    ~TreeOwner() { removeTree(path); }
};

SampleMac macFor(const QStringList& arguments, Date now) {
    const auto option = arguments.indexOf(QStringLiteral("--applications"));
    const auto count = option < 0 ? 0 : arguments.value(option + 1).toInt();
    return count > 0 ? SampleMac::manyApplications(count, now) : SampleMac::full(now);
}

} // namespace
} // namespace quillane

int main(int argc, char** argv) {
    using namespace quillane;
    if (const auto code = DrawingProgram::answer(argc, argv)) {
        return *code;
    }
    QApplication application(argc, argv);
    quitOnInterrupt(application);
    DesktopSession desktop(application);
    const QTemporaryDir volume(QApplication::applicationDirPath() + QStringLiteral("/volume-XXXXXX"));
    if (!volume.isValid()) {
        return 1;
    }
    const TreeOwner tree{volume.path().toStdString()};
    SampleSession session(desktop, macFor(QApplication::arguments(), desktop.clock().now()), tree.path);
    SampleDesktop::Signs signs(session.tasks());
    QuillaneApp app(session.platform(signs.notifications, signs.menuBarExtra));
    if (QApplication::arguments().contains(QStringLiteral("--welcomed"))) {
        app.library().platform().defaults.set(DefaultsKeys::kHasSeenOnboarding, true);
    }
    app.showWindow();
    return QApplication::exec();
}
