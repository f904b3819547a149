#pragma once
#include "AutomationSettings.h"
#include "DefaultsKeys.h"
#include "FakePower.h"
#include "FaultFileSystem.h"
#include "LibraryTest.h"
#include "RecordingNotifications.h"
#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillane {

using namespace std::chrono_literals;

// A library whose hours the test lets pass and whose notifications it keeps. Every setting has the value that it has
// at a first launch.
class AutomationTest : public LibraryTest {
  protected:
    AutomationTest() {
        disk.folder("Users/alex/.Trash"); // which can be read, so that nothing polls it
        AutomationSettings::registerDefaults(defaults);
        library = std::make_unique<AppLibrary>(automated);
    }
    ~AutomationTest() override { library.reset(); } // before what it looks at

    void turnOn(std::string_view key) { defaults.set(key, true); }
    // As after a scan.
    void beReady() { library->phase = Phase{Kind::ready}; }
    // Exactly so much could be reclaimed.
    void makeReclaimable(Bytes bytes) {
        DevCacheItem item;
        item.url = FileURL("/Users/alex/Library/Developer/made-up");
        item.bytes = bytes;
        item.safeToSweep = true;
        library->developerCaches = std::vector{item};
    }
    void putOrphans(const std::vector<std::pair<std::string, Bytes>>& found) {
        std::vector<OrphanItem> orphans;
        for (const auto& [vendor, bytes] : found) {
            OrphanItem item;
            item.url = FileURL("/Users/alex/Library/Caches/" + vendor + "." + std::to_string(orphans.size()));
            item.category = "Caches";
            item.identifier = vendor + ".app";
            item.vendor = vendor;
            item.bytes = bytes;
            orphans.push_back(std::move(item));
        }
        library->orphans = std::move(orphans);
    }
    static StartupItem startupItem(const std::string& label) {
        StartupItem item;
        item.url = FileURL("/Users/alex/Library/LaunchAgents/" + label + ".plist");
        item.label = label;
        return item;
    }
    void putStartupItems(const std::vector<std::string>& labels) {
        std::vector<StartupItem> items;
        items.reserve(labels.size());
        for (const auto& label : labels) {
            items.push_back(startupItem(label));
        }
        library->startupItems = std::move(items);
    }

    // The next tick, to its end: then the loop is at rest, and the next one is an hour away.
    void passHour() {
        const int before = scans();
        clock.advance(1h);
        if (scans() != before) {
            clock.advance(kScanningTick);
        }
    }
    // Time goes on and the main thread has its turns, but no job of the pools comes to its end.
    void passWithoutJobs(Duration duration) {
        for (Duration passed = 0s; passed < duration; passed += 1s) {
            clock.advanceWithoutRunning(1s);
            runner.settle();
        }
    }

    std::vector<std::string> identifiers() const {
        std::vector<std::string> result;
        for (const auto& notification : notifications.added) {
            result.push_back(notification.identifier);
        }
        return result;
    }
    int scans() const { return AppLibraryTesting::generation(*library); }
    template <class T>
    std::optional<T> stored(std::string_view key) const {
        const auto value = defaults.isStored(key) ? defaults.value(key) : std::nullopt;
        const T* typed = value ? std::get_if<T>(&*value) : nullptr;
        return typed != nullptr ? std::optional(*typed) : std::nullopt;
    }

    // How long a tick takes that scans, when the jobs of the scan and of the load take no time: until its two looks.
    static constexpr Duration kScanningTick = 3s;

    FaultFileSystem faulty{files};
    RecordingNotifications notifications{runner};
    FakePower power;
    const Platform automated{.files = faulty,
                             .commands = commands,
                             .metadata = metadata,
                             .clock = clock,
                             .tasks = runner,
                             .workspace = workspace,
                             .trash = trash,
                             .runningApplications = running,
                             .defaults = defaults,
                             .notifications = notifications,
                             .power = power};
};

} // namespace quillane
