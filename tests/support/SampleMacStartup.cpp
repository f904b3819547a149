#include "PropertyListWriter.h"
#include "SampleContents.h"
#include "SampleMac.h"

namespace quillane::SampleContents {
namespace {

using Kind = StartupItem::Kind;
using Health = StartupItem::Health;

const std::string kAgents = "Library/LaunchAgents/";
const std::string kMachineAgents = "/Library/LaunchAgents/";
const std::string kDaemons = "/Library/LaunchDaemons/";
const std::string kHelpers = "/Library/PrivilegedHelperTools/";

// The first of the system's own applications: they are of one vendor with all that the system labels.
constexpr const char* kFirstOfTheSystem = "Almanac (same vendor)";

Plist job(const std::string& label, const std::string& program, Plist::Dictionary more = {}) {
    Plist::Dictionary keys = {{"Label", label}, {"ProgramArguments", Plist::array({program, "--launchd"})}};
    keys.insert(keys.end(), more.begin(), more.end());
    return Plist::dictionary(std::move(keys));
}

// Those that an application has brought are its support files too.
void addItemsOfApplications(SampleMac& mac) {
    const auto lumen = kAgents + "io.lumen.browser.update.plist";
    mac.declared("/Applications/Lumen Browser.app")
        .supportList(lumen, job("io.lumen.browser.update",
                                "/Applications/Lumen Browser.app/Contents/MacOS/Lumen Browser",
                                {{"RunAtLoad", true}, {"StartInterval", 3'600}}));
    mac.startupItem({lumen, "io.lumen.browser.update", Kind::agent, Health::ok, "Lumen Browser", true,
                     "at login, every 1 hr"});
    const auto sidecar = kAgents + "com.sidecarsync.agent.plist";
    mac.declared("Applications/Sidecar Sync.app")
        .supportList(sidecar, job("com.sidecarsync.agent",
                                  "~/Applications/Sidecar Sync.app/Contents/MacOS/Sidecar Sync",
                                  {{"KeepAlive", Plist::dictionary({{"SuccessfulExit", false}})}}));
    mac.startupItem(
        {sidecar, "com.sidecarsync.agent", Kind::agent, Health::ok, "Sidecar Sync", false, "kept alive"});
    const auto network = kHelpers + "dev.harbour.vm.network";
    const auto daemon = kDaemons + "dev.harbour.vm.network.plist";
    mac.declared("/Applications/Harbour VM.app")
        .supportList(daemon,
                     job("dev.harbour.vm.network", network, {{"RunAtLoad", true}, {"KeepAlive", true}}));
    mac.startupItem({daemon, "dev.harbour.vm.network", Kind::daemon, Health::ok, "Harbour VM", std::nullopt,
                     "at boot, kept alive"});
    mac.startupItem({network, "dev.harbour.vm.network", Kind::helper, Health::ok, "Harbour VM", std::nullopt,
                     "on demand"});
}

void addItemsOfVendorsAndTheSystem(SampleMac& mac) {
    mac.file("/usr/local/libexec/orbit-calendar", "#!/bin/sh\n");
    mac.startupItem({kAgents + "com.orbit.calendar.plist", "com.orbit.calendar", Kind::agent, Health::ok,
                     "Orbit Mail (same vendor)", true, "every 5 min"},
                    job("com.orbit.calendar", "/usr/local/libexec/orbit-calendar", {{"StartInterval", 300}}));
    mac.file("/usr/local/libexec/meridian-tiles", "#!/bin/sh\n");
    mac.startupItem(
        {kMachineAgents + "com.meridianmaps.tiles.plist", "com.meridianmaps.tiles", Kind::agent, Health::ok,
         "Meridian Maps (same vendor)", std::nullopt, "at login"},
        job("com.meridianmaps.tiles", "/usr/local/libexec/meridian-tiles", {{"RunAtLoad", true}}));
    mac.file(kHelpers + "com.northlight.licence", "#!/bin/sh\n");
    mac.startupItem({kHelpers + "com.northlight.licence", "com.northlight.licence", Kind::helper, Health::ok,
                     "Northlight RAW (same vendor)", std::nullopt, "on demand"});
    mac.file("/usr/libexec/sample-keyboard", "#!/bin/sh\n");
    mac.startupItem({kMachineAgents + "com.apple.sample.keyboard.plist", "com.apple.sample.keyboard",
                     Kind::agent, Health::ok, kFirstOfTheSystem, std::nullopt, "on demand"},
                    job("com.apple.sample.keyboard", "/usr/libexec/sample-keyboard"));
}

void addProblems(SampleMac& mac) {
    mac.startupItem({kAgents + "com.sketchpad.draw.agent.plist", "com.sketchpad.draw.agent", Kind::agent,
                     Health::broken, std::nullopt, true, "at login"},
                    job("com.sketchpad.draw.agent", "/Applications/Sketchpad.app/Contents/MacOS/agent",
                        {{"RunAtLoad", true}}));
    mac.startupItem({kDaemons + "fm.tempo.desktop.daemon.plist", "fm.tempo.desktop.daemon", Kind::daemon,
                     Health::broken, std::nullopt, std::nullopt, "at boot, kept alive"},
                    job("fm.tempo.desktop.daemon", "/Applications/Tempo.app/Contents/MacOS/daemon",
                        {{"RunAtLoad", true}, {"KeepAlive", true}}));
    mac.startupItem({kDaemons + "com.apple.sample.legacy.plist", "com.apple.sample.legacy", Kind::daemon,
                     Health::broken, kFirstOfTheSystem, std::nullopt, "on demand"},
                    job("com.apple.sample.legacy", "/usr/libexec/sample-legacy"));
    mac.file("/usr/local/bin/relay-updater", "#!/bin/sh\n");
    mac.startupItem({kAgents + "chat.relay.updater.plist", "chat.relay.updater", Kind::agent,
                     Health::orphaned, std::nullopt, false, "every 1 min, 30 sec"},
                    job("chat.relay.updater", "/usr/local/bin/relay-updater", {{"StartInterval", 90}}));
    mac.file("bin/tidepool", "#!/bin/sh\n");
    mac.startupItem({kAgents + "tidepool.plist", "tidepool", Kind::agent, Health::orphaned, std::nullopt,
                     false, "on demand"},
                    Plist::dictionary({{"Program", "~/bin/tidepool"}}));
    mac.startupItem({kHelpers + "fm.tempo.desktop.updater", "fm.tempo.desktop.updater", Kind::helper,
                     Health::orphaned, std::nullopt, std::nullopt, "on demand"});
}

void addWhatOnlyLooksLikeItems(SampleMac& mac) {
    mac.file(kAgents + "damaged.plist", "<?xml version=\"1.0\"?><plist><dict><key>");
    mac.file(kAgents + ".hidden.plist", xmlPropertyList(job("hidden", "/bin/sh")));
    mac.file(kAgents + "Read me.txt", "not a property list\n");
    mac.file("/System/Library/LaunchDaemons/com.apple.sample.system.plist",
             xmlPropertyList(job("com.apple.sample.system", "/bin/sh")));
}

} // namespace

void addStartupItems(SampleMac& mac) {
    addItemsOfApplications(mac);
    addItemsOfVendorsAndTheSystem(mac);
    addProblems(mac);
    addWhatOnlyLooksLikeItems(mac);
    mac.loaded("com.apple.sample.session").loaded("application.io.lumen.browser.4711.4712");
}

} // namespace quillane::SampleContents
