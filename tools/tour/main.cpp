// Opens the window over a sample Mac, walks through it and says what it saw.
// Usage: quillane-tour PICTURES [--small]
#include "QuillaneApp.h"
#include "SampleSession.h"
#include "Tour.h"
#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>

int main(int argc, char** argv) {
    using namespace quillane;
    QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: quillane-tour PICTURES [--small]\n");
        return 2;
    }
    QTemporaryDir volume;
    if (!volume.isValid()) {
        std::fprintf(stderr, "quillane-tour: there is no room for a sample Mac\n");
        return 1;
    }
    DesktopSession desktop(application);
    const auto now = desktop.clock().now();
    const auto mac =
        arguments.contains(QStringLiteral("--small")) ? SampleMac::small(now) : SampleMac::full(now);
    const auto folder = volume.path().toStdString();
    SampleSession session(desktop, mac, folder);
    QuillaneApp app(session.platform());
    app.showWindow();
    return Tour(app, mac, folder, arguments.at(1)).run() ? 0 : 1;
}
