#include "Contrast.h"
#include <utility>

namespace quillane {
namespace {

constexpr unsigned kPrefersHigher = 1; // 0 is no preference

} // namespace

Contrast::Contrast(TaskRunner& tasks, SessionBus bus, QObject* parent)
    : QObject(parent)
    , m_setting(tasks, std::move(bus), QStringLiteral("org.freedesktop.appearance"),
                QStringLiteral("contrast")) {
    connect(&m_setting, &PortalSetting::told, this, &Contrast::take);
}

void Contrast::take(const QVariant& value) {
    const bool isHigh = value.toUInt() == kPrefersHigher;
    if (isHigh != m_isHigh) {
        m_isHigh = isHigh;
        emit changed();
    }
}

} // namespace quillane
