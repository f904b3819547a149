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

void DesktopSession::followDesktop(TaskRunner& tasks) {
    const ColorScheme& scheme = m_colorScheme.emplace(tasks);
    QObject::connect(&scheme, &ColorScheme::changed,
                     [&scheme] { Look::setDark(scheme.scheme() == ColorScheme::Scheme::dark); });
    const ReducedMotion& motion = m_reducedMotion.emplace(tasks);
    QObject::connect(&motion, &ReducedMotion::changed, [&motion] { Look::setReducedMotion(motion.isOn()); });
}

void DesktopSession::stopFollowing() {
    m_colorScheme.reset();
    m_reducedMotion.reset();
}

} // namespace quillane
