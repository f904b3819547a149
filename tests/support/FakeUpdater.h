#pragma once
#include "TaskRunner.h"
#include "Updater.h"
#include <optional>
#include <string>
#include <utility>

namespace quillane {

// An updater whose answers the test sets. Main thread.
class FakeUpdater final : public Updater {
  public:
    // The handler is called at a turn of this runner's main thread.
    explicit FakeUpdater(TaskRunner& tasks)
        : m_tasks(tasks) {}

    bool isAutomatic = false;
    bool canCheck = true;
    std::optional<Date> lastCheck;
    std::optional<std::string> version = "1.0";
    int checks = 0;   // that were started
    int timesSet = 0; // that the flag was handed on, changed or not
    void tellOfChange() {
        m_tasks.post([this] {
            if (m_changed) {
                m_changed();
            }
        });
    }

    bool automaticallyChecksForUpdates() const override { return isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn) override {
        isAutomatic = isOn;
        ++timesSet;
    }
    bool canCheckForUpdates() const override { return canCheck; }
    std::optional<Date> lastUpdateCheckDate() const override { return lastCheck; }
    void checkForUpdates() override { ++checks; }
    std::optional<std::string> installedVersion() const override { return version; }
    void setChangeHandler(std::function<void()> changed) override { m_changed = std::move(changed); }

  private:
    TaskRunner& m_tasks;
    std::function<void()> m_changed;
};

} // namespace quillane
