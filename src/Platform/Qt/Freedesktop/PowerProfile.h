#pragma once
#include "Power.h"
#include "ProfileService.h"
#include "SystemBus.h"
#include "TaskRunner.h"
#include <memory>

namespace quillane {

// Whether power is to be saved, as the daemon for power profiles tells it: by its present name, or by the one that it
// had before. Off until it has answered, and where there is none. The daemon is never started for this, and nothing
// here waits: the bus is reached by a job and asked without blocking. Main thread only; `tasks` must outlive it.
class PowerProfile final : public Power {
  public:
    explicit PowerProfile(TaskRunner& tasks, SystemBus bus = sharedSystemBus);
    PowerProfile(const PowerProfile&) = delete;
    PowerProfile& operator=(const PowerProfile&) = delete;

    bool isLowPowerModeEnabled() const override;

  private:
    void listen(const QDBusConnection& bus);

    std::unique_ptr<ProfileService> m_present; // empty until the bus has been reached, as is the other
    std::unique_ptr<ProfileService> m_former;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<PowerProfile*> m_self = std::make_shared<PowerProfile*>(this);
};

} // namespace quillane
