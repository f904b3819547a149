#pragma once
#include "DirectoryWatch.h"
#include "MenuBarExtra.h"
#include "Power.h"
#include "PreviewPanel.h"
#include "Updater.h"
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

// A desktop without a panel.
class AbsentMenuBarExtra final : public MenuBarExtra {
  public:
    void insert() override {}
    void withdraw() override {}
    bool isShown() const override { return false; }
    void setFigure(const std::string&) override {}
    void setMenu(const std::vector<Entry>&) override {}
    void setHandlers(Handlers) override {}
};

// A build that nobody updates but who installed it.
class AbsentUpdater final : public Updater {
  public:
    bool automaticallyChecksForUpdates() const override { return false; }
    void setAutomaticallyChecksForUpdates(bool) override {}
    bool canCheckForUpdates() const override { return false; }
    std::optional<Date> lastUpdateCheckDate() const override { return std::nullopt; }
    void checkForUpdates() override {}
    std::optional<std::string> installedVersion() const override { return std::nullopt; }
    void setChangeHandler(std::function<void()>) override {}
};

// A system without a panel for looking at files: the program shows them in its own.
class AbsentPreviewPanel final : public PreviewPanel {
  public:
    bool isThere() const override { return false; }
    void setHandlers(Handlers) override {}
    void show(const FileURL&, std::uintptr_t) override {}
    void hide() override {}
    bool isShown() const override { return false; }
};

} // namespace quillane
