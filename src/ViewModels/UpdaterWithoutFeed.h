#pragma once
#include "Updater.h"
#include "VersionNumber.h"
#include <utility>

namespace quillane {

class Defaults;

// The updater of a build that names no feed, as those are that come with a system, which brings newer versions itself.
// It asks nobody; what the person wants of automatic checks is kept all the same. Main thread only.
class UpdaterWithoutFeed final : public Updater {
  public:
    // The settings are those of UpdateSettings, and outlive it.
    UpdaterWithoutFeed(VersionNumber installed, Defaults& settings)
        : m_installed(std::move(installed))
        , m_settings(settings) {}

    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool isOn) override;
    bool canCheckForUpdates() const override { return false; }
    std::optional<Date> lastUpdateCheckDate() const override { return std::nullopt; }
    void checkForUpdates() override {}
    std::optional<std::string> installedVersion() const override { return m_installed.text(); }
    void setChangeHandler(std::function<void()>) override {}

  private:
    const VersionNumber m_installed;
    Defaults& m_settings;
};

} // namespace quillane
