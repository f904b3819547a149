// Opens the window over a sample Mac, walks through it and says what it saw.
// Usage: quillane-tour PICTURES [--small]
#include "FakeMenuBarExtra.h"
#include "QuillaneApp.h"
#include "RecordingNotifications.h"
#include "SampleSession.h"
#include "TemporaryFolder.h"
#include "Tour.h"
#include "Visitor.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QWindow>
#include <cstdio>

int main(int argc, char** argv) {
    using namespace quillane;
    QElapsedTimer sinceStart;
    sinceStart.start();
    QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: quillane-tour PICTURES [--small]\n");
        return 2;
    }
    const TemporaryFolder volume;
    DesktopSession desktop(application);
    const auto now = desktop.clock().now();
    const auto beforeSample = sinceStart.elapsed();
    const auto mac =
        arguments.contains(QStringLiteral("--small")) ? SampleMac::small(now) : SampleMac::full(now);
    const auto& folder = volume.path();
    SampleSession session(desktop, mac, folder);
    const auto afterSample = sinceStart.elapsed();
    RecordingNotifications notifications(session.tasks());
    FakeMenuBarExtra menuBarExtra(session.tasks());
    QuillaneApp app(session.platform(notifications, menuBarExtra));
    app.showWindow();
    Visitor::waitUntil([&] { return app.window()->window()->windowHandle()->isExposed(); });
    std::printf("The window stood %lld ms after the start, the laying of the sample not counted.\n",
                static_cast<long long>(sinceStart.elapsed() - (afterSample - beforeSample)));
    return Tour(app, notifications, menuBarExtra, mac, folder, arguments.at(1)).run() ? 0 : 1;
}
