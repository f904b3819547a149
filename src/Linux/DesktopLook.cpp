#include "DesktopLook.h"
#include "ColorScheme.h"
#include "Components/Look.h"
#include "Contrast.h"
#include "ReducedMotion.h"
#include "TextScaling.h"
#include <QGuiApplication>

namespace quillane {

struct DesktopLook::Sources {
    explicit Sources(TaskRunner& tasks)
        : scheme(tasks)
        , motion(tasks)
        , contrast(tasks)
        , text(tasks) {}

    ColorScheme scheme;
    ReducedMotion motion;
    Contrast contrast;
    TextScaling text;
};

DesktopLook::DesktopLook(TaskRunner& tasks)
    : m_sources(std::make_unique<Sources>(tasks)) {
    auto& sources = *m_sources;
    QObject::connect(&sources.scheme, &ColorScheme::changed, [&scheme = sources.scheme] {
        Look::setDark(scheme.scheme() == ColorScheme::Scheme::dark);
    });
    QObject::connect(&sources.motion, &ReducedMotion::changed,
                     [&motion = sources.motion] { Look::setReducedMotion(motion.isOn()); });
    QObject::connect(&sources.contrast, &Contrast::changed,
                     [&contrast = sources.contrast] { Look::setHighContrast(contrast.isHigh()); });
    QObject::connect(&sources.text, &TextScaling::changed, [&text = sources.text] {
        const bool mayBeDone = QGuiApplication::platformName() == QLatin1String("xcb");
        Look::setTextScale(mayBeDone ? TextScaling::leftOf(text.factor(), qApp->devicePixelRatio())
                                     : text.factor());
    });
}

DesktopLook::~DesktopLook() = default;

} // namespace quillane
