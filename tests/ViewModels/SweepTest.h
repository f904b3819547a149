#pragma once
#include "AppLibrary.h"
#include "IconCache.h"
#include "RemovalWorld.h"
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// A library over a small volume whose lists the test fills itself, and whose sweeps it steps.
class SweepTest : public testing::Test {
  protected:
    using Phase = AppLibrary::Phase;

    SweepTest() { IconCache::shared().attach(&world.platform); }
    ~SweepTest() override { IconCache::shared().attach(nullptr); }

    static FileURL home(const std::string& below) { return FileURL("/Users/alex/" + below); }

    // A file below the home folder, with its own path as content.
    FileURL file(const std::string& below) {
        world.disk.file("Users/alex/" + below, below);
        return home(below);
    }
    // A regenerable leftover that lies on disk.
    LeftoverItem cache(const std::string& below, Bytes bytes) {
        return {file(below), "Caches", LeftoverItem::Confidence::high, bytes, false, true};
    }
    static InstalledApp app(const std::string& name, std::vector<LeftoverItem> leftovers = {}) {
        InstalledApp app;
        app.url = FileURL("/Applications/" + name + ".app");
        app.name = name;
        app.bundleIdentifier = "com.example." + name;
        app.source = AppSource::applications;
        app.leftovers = std::move(leftovers);
        app.isMeasured = true;
        return app;
    }
    static SweepEntry entry(const FileURL& url, SweepCategory category, Bytes bytes) {
        return {url, category, std::string(url.lastPathComponent()), "subtitle", bytes};
    }
    static SweepEntry trashRow() {
        return {FileURL("/.Trash"), SweepCategory::trash, "Everything in the Trash", "1 item(s)", 1};
    }

    void startSweep(std::vector<SweepEntry> entries, std::string label = "Clean Now") {
        report.reset();
        library->tasks().start(
            [this, entries = std::move(entries), label = std::move(label)](StopToken) -> Task<> {
                report = co_await library->runSweep(entries, label);
            });
    }
    SweepReport sweep(std::vector<SweepEntry> entries, std::string label = "Clean Now") {
        startSweep(std::move(entries), std::move(label));
        world.runner.runAll();
        return report.value();
    }
    Uninstaller::Report undo() {
        std::optional<Uninstaller::Report> undone;
        library->tasks().start([&](StopToken) -> Task<> { undone = co_await library->undoLastOperation(); });
        world.runner.runAll();
        return undone.value();
    }

    RemovalWorld world;
    std::optional<SweepReport> report;
    std::unique_ptr<AppLibrary> library = std::make_unique<AppLibrary>(world.platform);
};

} // namespace quillane
