#include "DesktopSession.h"
#include "Look.h"
#include "Symbols.h"
#include <QApplication>

namespace quillane {

DesktopSession::DesktopSession(QApplication& application) {
    QApplication::setApplicationName(QStringLiteral("Quillane"));
    QApplication::setDesktopFileName(QStringLiteral("quillane"));
    QApplication::setWindowIcon(Symbols::icon(QStringLiteral("AppIcon")));
    Look::install(application);
}

void DesktopSession::followColorScheme(TaskRunner& tasks) {
    ColorScheme& scheme = m_colorScheme.emplace(tasks);
    const auto apply = [&scheme] { Look::setDark(scheme.scheme() == ColorScheme::Scheme::dark); };
    QObject::connect(&scheme, &ColorScheme::changed, &scheme, apply);
    apply();
}

} // namespace quillane
