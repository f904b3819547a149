#include "TextScaling.h"
#include <algorithm>
#include <cmath>
#include <utility>

namespace quillane {
namespace {

// Text for people that is a number is no number here.
double factorOf(const QVariant& value) {
    const double number = value.userType() == QMetaType::Double ? value.toDouble() : 1;
    return std::isfinite(number) && number > 0 ? std::clamp(number, TextScaling::kLeast, TextScaling::kMost)
                                               : 1;
}

} // namespace

TextScaling::TextScaling(TaskRunner& tasks, SessionBus bus, QObject* parent)
    : QObject(parent)
    , m_setting(tasks, std::move(bus), QStringLiteral("org.gnome.desktop.interface"),
                QStringLiteral("text-scaling-factor")) {
    connect(&m_setting, &PortalSetting::told, this, &TextScaling::take);
}

double TextScaling::leftOf(double factor, double devicePixelRatio) {
    constexpr double kAbout = 0.02;
    const double own = devicePixelRatio / factor; // of the display itself: whole, if the factor is in it
    const bool isInIt = own > 1 - kAbout && std::abs(own - std::round(own)) < kAbout;
    return isInIt ? 1 : factor;
}

void TextScaling::take(const QVariant& value) {
    const double factor = factorOf(value);
    if (factor != m_factor) {
        m_factor = factor;
        emit changed();
    }
}

} // namespace quillane
