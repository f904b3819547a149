#pragma once
#include "InstalledApp.h"
#include "Platform.h"
#include "StartupItem.h"
#include "StartupOwners.h"
#include "StopToken.h"
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

// What starts by itself through launchd, and stopping it. Everything here blocks, without a limit of time while
// launchctl runs; any thread.
namespace quillane::StartupFinder {

// The agents, daemons and privileged helpers that are not the system's own part, judged by the installed
// applications: the worst health first, then by label, upper case before lower case. A list that can't be read is left
// out. When launchctl can't be asked, no agent reads as loaded. Once a stop is requested what comes back is of no use.
std::vector<StartupItem> find(const Platform& platform, const std::vector<InstalledApp>& installed,
                              const StopToken& stop = {});

// Whether something of this path may be among what find() tells, by the folder in which it lies.
bool mayHold(const FileURL& url, const FileURL& home);

// Makes launchd let go of one of the user's own agents until the next login. Absent on success, and when launchctl
// can't be started; otherwise what to tell the user, in launchctl's own words where it has any. Anything else than an
// agent in the home folder is refused without asking.
std::optional<std::string> unload(const Platform& platform, const StartupItem& item,
                                  const StopToken& stop = {});

// The item of one property list; absent when the list can't be read. `loaded` are the labels that launchd has now.
std::optional<StartupItem> describe(const Platform& platform, const FileURL& url, StartupItem::Kind kind,
                                    const StartupOwners& owners,
                                    const std::unordered_set<std::string>& loaded);

// The labels of all that launchd has loaded for the user; empty when it can't be asked.
std::unordered_set<std::string> loadedUserLabels(const Platform& platform, const StopToken& stop = {});

} // namespace quillane::StartupFinder
