#include "DesktopSession.h"
#include "Components/DateWords.h"
#include "Components/Look.h"
#include "Components/Symbols.h"
#include "LocalCalendar.h"
#include <QApplication>

namespace quillane {

void introduceToDesktop() {
    QApplication::setApplicationName(QStringLiteral("Quillane"));
    QApplication::setDesktopFileName(QStringLiteral("org.quillane.Quillane"));
    QApplication::setWindowIcon(Symbols::icon(QStringLiteral("AppIcon")));
}

DesktopSession::DesktopSession(QApplication& application) {
    introduceToDesktop();
    Look::install(application);
}

void DesktopSession::followDesktop(TaskRunner& tasks) {
    m_look.emplace(tasks);
    const TimeZoneWatch& timeZone = m_timeZone.emplace(QString::fromUtf8(LocalCalendar::kLink));
    QObject::connect(&timeZone, &TimeZoneWatch::changed, [] { tellDateWordsMayDiffer(); });
}

void DesktopSession::stopFollowing() {
    m_timeZone.reset();
    m_look.reset();
}

} // namespace quillane
