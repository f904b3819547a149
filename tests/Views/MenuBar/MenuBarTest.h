#pragma once
#include "AppLibrary.h"
#include "FakeMenuBarExtra.h"
#include "SectionRecords.h"
#include "WindowTest.h"

namespace quillane {

// A library that the test fills by hand, on a desktop with a panel.
class MenuBarTest : public WindowTest {
  protected:
    using Kind = AppLibrary::Phase::Kind;

    MenuBarTest() {
        auto app = measuredApp("Alder", 1'000'000);
        app.leftovers = {leftover("/Users/alex/Library/Caches/Alder", "Caches", 9'420'000'000)};
        app.leftovers.front().isCache = true;
        desk.apps = std::vector{app};
        desk.developerCaches = std::vector{devCache("Xcode", "Derived Data", 12'870'000'000)};
        desk.orphans = std::vector{orphan("org.birch", "Birch", 2'570'000'000)};
        desk.phase = AppLibrary::Phase{Kind::ready};
    }
    // Nothing that a cleanup would take is left.
    void empty() {
        desk.apps = std::vector<InstalledApp>();
        desk.developerCaches = std::vector<DevCacheItem>();
        desk.orphans = std::vector<OrphanItem>();
    }

    FakeMenuBarExtra extra{runner};
    Platform withPanel{.files = files,
                       .commands = commands,
                       .metadata = metadata,
                       .clock = clock,
                       .tasks = runner,
                       .workspace = workspace,
                       .trash = fakes.trash,
                       .runningApplications = fakes.running,
                       .defaults = fakes.defaults,
                       .menuBarExtra = extra};
    AppLibrary desk{withPanel}; // ready, with 24.86 GB in the three categories that are ticked at first
};

} // namespace quillane
