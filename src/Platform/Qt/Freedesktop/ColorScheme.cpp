#include "ColorScheme.h"
#include <utility>

namespace quillane {
namespace {

constexpr unsigned kPrefersDark = 1; // 0 is no preference, 2 prefers light

} // namespace

ColorScheme::ColorScheme(TaskRunner& tasks, SessionBus bus, QObject* parent)
    : QObject(parent)
    , m_setting(tasks, std::move(bus), QStringLiteral("org.freedesktop.appearance"),
                QStringLiteral("color-scheme")) {
    connect(&m_setting, &PortalSetting::told, this, &ColorScheme::take);
}

void ColorScheme::take(const QVariant& value) {
    const auto scheme = value.toUInt() == kPrefersDark ? Scheme::dark : Scheme::light;
    if (scheme != m_scheme) {
        m_scheme = scheme;
        emit changed();
    }
}

} // namespace quillane
