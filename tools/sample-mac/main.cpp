// The window over a sample Mac, which is laid beside this program and goes with it.
#include "QuillaneApp.h"
#include "SampleSession.h"
#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    using namespace quillane;
    QApplication application(argc, argv);
    DesktopSession desktop(application);
    const QTemporaryDir volume(QApplication::applicationDirPath() + QStringLiteral("/volume-XXXXXX"));
    if (!volume.isValid()) {
        return 1;
    }
    SampleSession session(desktop, SampleMac::full(desktop.clock().now()), volume.path().toStdString());
    QuillaneApp app(session.platform());
    app.showWindow();
    return QApplication::exec();
}
