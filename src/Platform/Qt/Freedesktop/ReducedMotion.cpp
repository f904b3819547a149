#include "ReducedMotion.h"

namespace quillane {
namespace {

constexpr unsigned kPrefersReduced = 1; // 0 is no preference

} // namespace

ReducedMotion::ReducedMotion(TaskRunner& tasks, const SessionBus& bus, QObject* parent)
    : QObject(parent)
    , m_shared(tasks, bus, QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion"))
    , m_animations(tasks, bus, QStringLiteral("org.gnome.desktop.interface"),
                   QStringLiteral("enable-animations")) {
    connect(&m_shared, &PortalSetting::told, this,
            [this](const QVariant& value) { set(m_prefersReduced, value.toUInt() == kPrefersReduced); });
    // What is no truth value is not heeded: it must not make everything stand still.
    connect(&m_animations, &PortalSetting::told, this, [this](const QVariant& value) {
        set(m_animates, value.userType() != QMetaType::Bool || value.toBool());
    });
}

void ReducedMotion::set(bool& field, bool value) {
    const bool wasOn = isOn();
    field = value;
    if (isOn() != wasOn) {
        emit changed();
    }
}

} // namespace quillane
