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
    const ColorScheme& scheme = m_colorScheme.emplace(tasks);
    QObject::connect(&scheme, &ColorScheme::changed,
                     [&scheme] { Look::setDark(scheme.scheme() == ColorScheme::Scheme::dark); });
    const ReducedMotion& motion = m_reducedMotion.emplace(tasks);
    QObject::connect(&motion, &ReducedMotion::changed, [&motion] { Look::setReducedMotion(motion.isOn()); });
    const Contrast& contrast = m_contrast.emplace(tasks);
    QObject::connect(&contrast, &Contrast::changed,
                     [&contrast] { Look::setHighContrast(contrast.isHigh()); });
    const TimeZoneWatch& timeZone = m_timeZone.emplace(QString::fromUtf8(LocalCalendar::kLink));
    QObject::connect(&timeZone, &TimeZoneWatch::changed, [] { tellDateWordsMayDiffer(); });
    const TextScaling& text = m_textScaling.emplace(tasks);
    QObject::connect(&text, &TextScaling::changed, [&text] {
        const bool mayBeDone = QGuiApplication::platformName() == QLatin1String("xcb");
        Look::setTextScale(mayBeDone ? TextScaling::leftOf(text.factor(), qApp->devicePixelRatio())
                                     : text.factor());
    });
}

void DesktopSession::stopFollowing() {
    m_timeZone.reset();
    m_colorScheme.reset();
    m_reducedMotion.reset();
    m_contrast.reset();
    m_textScaling.reset();
}

} // namespace quillane
