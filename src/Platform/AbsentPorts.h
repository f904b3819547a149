#pragma once
#include "DirectoryWatch.h"
#include "Power.h"
#include "UserNotifications.h"

namespace quillane {

// A system on which no folder can be watched.
class AbsentDirectoryWatch final : public DirectoryWatch {
  public:
    std::unique_ptr<Source> watch(const FileURL&, std::function<void()>) override { return nullptr; }
};

// A desktop without notifications.
class AbsentUserNotifications final : public UserNotifications {
  public:
    void requestAuthorization() override {}
    void add(const UserNotification&) override {}
    void setClickHandler(std::function<void(const Click&)>) override {}
};

// A machine that never saves power.
class AbsentPower final : public Power {
  public:
    bool isLowPowerModeEnabled() const override { return false; }
};

} // namespace quillane
