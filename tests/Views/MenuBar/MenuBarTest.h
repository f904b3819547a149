#pragma once
#include "AppLibrary.h"
#include "SectionRecords.h"
#include "WindowTest.h"

namespace quillane {

// The library is ready, with 24.86 GB in the three categories that are ticked at first, and there is no window.
class MenuBarTest : public WindowTest {
  protected:
    using Kind = AppLibrary::Phase::Kind;

    MenuBarTest() {
        auto app = measuredApp("Alder", 1'000'000);
        app.leftovers = {leftover("/Users/alex/Library/Caches/Alder", "Caches", 9'420'000'000)};
        app.leftovers.front().isCache = true;
        library.apps = std::vector{app};
        library.developerCaches = std::vector{devCache("Xcode", "Derived Data", 12'870'000'000)};
        library.orphans = std::vector{orphan("org.birch", "Birch", 2'570'000'000)};
        library.phase = AppLibrary::Phase{Kind::ready};
    }
    // Nothing that a cleanup would take is left.
    void empty() {
        library.apps = std::vector<InstalledApp>();
        library.developerCaches = std::vector<DevCacheItem>();
        library.orphans = std::vector<OrphanItem>();
    }
};

} // namespace quillane
