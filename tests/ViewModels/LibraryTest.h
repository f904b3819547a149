#pragma once
#include "AppLibrary.h"
#include "AppLibraryTesting.h"
#include "FakeMetadata.h"
#include "FakeRunningApplications.h"
#include "FakeWorkspace.h"
#include "FolderTrash.h"
#include "IconCache.h"
#include "ManualClock.h"
#include "MemoryDefaults.h"
#include "Metadata.h"
#include "PosixFileSystem.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quillane {

// Keeps every phase that is published.
class PhaseLog final : public Observer {
  public:
    explicit PhaseLog(const AppLibrary& library)
        : m_library(library) {
        const Tracking tracking(*this);
        (void)library.phase.get();
    }
    void fieldDidChange() override { m_phases.push_back(*m_library.phase); }

    const std::vector<AppLibrary::Phase>& phases() const { return m_phases; }
    std::vector<AppLibrary::Phase::Kind> kinds() const {
        std::vector<AppLibrary::Phase::Kind> kinds;
        for (const auto& phase : m_phases) {
            kinds.push_back(phase.kind);
        }
        return kinds;
    }
    // The progress figures of the measuring stage.
    std::vector<int> measured() const {
        std::vector<int> figures;
        for (const auto& phase : m_phases) {
            if (phase.kind == AppLibrary::Phase::Kind::measuring) {
                figures.push_back(phase.done);
            }
        }
        return figures;
    }

  private:
    const AppLibrary& m_library;
    std::vector<AppLibrary::Phase> m_phases;
};

// Counts the notifications of what `read` reads.
class ChangeCounter final : public Observer {
  public:
    template <class Read>
    explicit ChangeCounter(Read read) {
        const Tracking tracking(*this);
        read();
    }
    void fieldDidChange() override { ++changes; }
    int changes = 0;
};

// A library over a small volume on the disk, with time and threads in the test's hand.
class LibraryTest : public testing::Test {
  protected:
    using Phase = AppLibrary::Phase;
    using Kind = AppLibrary::Phase::Kind;
    using ScanReason = AppLibrary::ScanReason;

    LibraryTest() { IconCache::shared().attach(&platform); }
    ~LibraryTest() override { IconCache::shared().attach(nullptr); }

    // Lays an application on the volume: "Applications/Alpha.app" is named "Alpha".
    void addApp(const std::string& below, const std::string& identifier = {}, const std::string& name = {}) {
        std::string keys;
        if (!identifier.empty()) {
            keys += "<key>CFBundleIdentifier</key><string>" + identifier + "</string>";
        }
        if (!name.empty()) {
            keys += "<key>CFBundleName</key><string>" + name + "</string>";
        }
        disk.file(below + "/Contents/Info.plist",
                  R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)" + keys +
                      "</dict></plist>");
        disk.allocated(below + "/Contents/Resources/data", 64 * 1024);
    }
    // "App 1" to "App <count>", in /Applications.
    void addApps(int count) {
        for (int i = 1; i <= count; ++i) {
            addApp("Applications/App " + std::to_string(i) + ".app");
        }
    }
    static FileURL urlOfApp(int number) {
        return FileURL("/Applications/App " + std::to_string(number) + ".app");
    }

    // Up to the moment at which the unmeasured list stands and the first batch waits to be run.
    void scanToMeasuring(ScanReason reason) {
        library->refresh(reason);
        runner.settle();
        runner.runJob();
        runner.settle();
    }
    void scan(ScanReason reason = ScanReason::user) {
        library->refresh(reason);
        runner.runAll();
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& app : *library->apps) {
            names.push_back(app.name);
        }
        return names;
    }
    auto measuredCount() const { return std::ranges::count_if(*library->apps, &InstalledApp::isMeasured); }

    TemporaryFolder disk;
    PosixFileSystem files{disk.path(), FileURL("/Users/alex")};
    ScriptedCommandRunner commands; // nothing can be started
    FakeMetadata metadata;          // an empty table: dates come from the files
    FakeWorkspace workspace;
    StepTaskRunner runner;
    ManualClock clock{runner};
    FolderTrash trash{disk.path(), FileURL("/Users/alex")};
    FakeRunningApplications running;
    MemoryDefaults defaults;
    const Platform platform{files, commands, metadata, clock, runner, workspace, trash, running, defaults};
    std::unique_ptr<AppLibrary> library = std::make_unique<AppLibrary>(platform);
};

} // namespace quillane
