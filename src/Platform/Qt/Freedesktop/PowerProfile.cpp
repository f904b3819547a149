#include "PowerProfile.h"
#include <utility>

namespace quillane {
namespace {

// A daemon that has both names says the same by both.
const ProfileService::Address kPresent = {.name = QStringLiteral("org.freedesktop.UPower.PowerProfiles"),
                                          .path = QStringLiteral("/org/freedesktop/UPower/PowerProfiles"),
                                          .interface =
                                              QStringLiteral("org.freedesktop.UPower.PowerProfiles")};
const ProfileService::Address kFormer = {.name = QStringLiteral("net.hadess.PowerProfiles"),
                                         .path = QStringLiteral("/net/hadess/PowerProfiles"),
                                         .interface = QStringLiteral("net.hadess.PowerProfiles")};
const auto kSaving = QStringLiteral("power-saver");

} // namespace

PowerProfile::PowerProfile(TaskRunner& tasks, SystemBus bus) {
    tasks.run(Priority::utility, [&tasks, bus = std::move(bus), self = std::weak_ptr(m_self)] {
        tasks.post([connection = bus(), self] {
            if (const auto power = self.lock()) {
                (*power)->listen(connection);
            }
        });
    });
}

void PowerProfile::listen(const QDBusConnection& bus) {
    m_present = std::make_unique<ProfileService>(bus, kPresent);
    m_former = std::make_unique<ProfileService>(bus, kFormer);
}

bool PowerProfile::isLowPowerModeEnabled() const {
    for (const auto* service : {m_present.get(), m_former.get()}) {
        if (const auto profile = service != nullptr ? service->profile() : std::nullopt) {
            return *profile == kSaving;
        }
    }
    return false;
}

} // namespace quillane
