// Sweeps the same number of rows over libraries of 100, 1,000 and 10,000 applications with 20 leftovers each, with as
// many orphans and developer caches as applications, and tells what the main thread pays for a row that has moved:
// that the lists forget it, above all. The Trash is instant. The sizes take turns in each round. Fails when a row of
// the largest library costs more than kMostGrowth times one of the smallest.
#include "AppLibrary.h"
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "ProcessorTime.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <algorithm>
#include <array>
#include <chrono>
#include <fmt/core.h>
#include <map>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

constexpr std::array kSizes = {100, 1'000, 10'000};
constexpr int kLeftovers = 20;
constexpr int kRows = 200;
constexpr int kAppsRemoved = 10; // each with its leftovers
constexpr int kOrphansRemoved = 50;
constexpr int kRounds = 15;
constexpr double kMostGrowth = 3;

// Takes everything at once and keeps nothing.
class InstantTrash final : public Trash {
  public:
    std::optional<FileURL> location() const override { return std::nullopt; }
    Result<std::vector<FileURL>> items() const override { return std::vector<FileURL>(); }
    Result<std::optional<FileURL>> moveToTrash(const FileURL& url) override {
        return std::optional(FileURL("/Users/alex/.Trash/" + std::string(url.lastPathComponent())));
    }
    Result<bool> cameFrom(const FileURL&, const FileURL&) const override { return true; }
    Result<> moveOut(const FileURL&, const FileURL&) override { return success(); }
    Result<> deleteItem(const FileURL&) override { return success(); }
};

FileURL leftoverURL(int app, int leftover) {
    return FileURL("/Users/alex/Library/Application Support/com.example.application" + std::to_string(app) +
                   "/leftover " + std::to_string(leftover));
}

std::vector<InstalledApp> applications(int count) {
    std::vector<InstalledApp> apps(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        auto& app = apps[static_cast<std::size_t>(i)];
        app.name = "Application " + std::to_string(i);
        app.url = FileURL("/Applications/" + app.name + ".app");
        app.isMeasured = true;
        for (int j = 0; j < kLeftovers; ++j) {
            app.leftovers.push_back(
                {leftoverURL(i, j), "Caches", LeftoverItem::Confidence::high, 4096, false, true});
        }
    }
    return apps;
}

FileURL orphanURL(int orphan) {
    return FileURL("/Users/alex/Library/Application Support/org.example.removed" + std::to_string(orphan));
}

std::vector<OrphanItem> orphans(int count) {
    std::vector<OrphanItem> items(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items[static_cast<std::size_t>(i)].url = orphanURL(i);
    }
    return items;
}

std::vector<DevCacheItem> developerCaches(int count) {
    std::vector<DevCacheItem> items(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        items[static_cast<std::size_t>(i)].url =
            FileURL("/Users/alex/Projects/project " + std::to_string(i) + "/node_modules");
    }
    return items;
}

SweepEntry row(FileURL url, SweepCategory category) {
    return {std::move(url), category, "title", "subtitle", 4096};
}

// The kinds of sweeps that are measured.
enum class Kind { leftovers, strangers, orphans, applications };

std::vector<SweepEntry> rows(Kind kind, int size) {
    std::vector<SweepEntry> entries;
    if (kind == Kind::applications) {
        for (int i = 0; i < kAppsRemoved; ++i) {
            const int app = i * (size / kAppsRemoved);
            entries.push_back(row(FileURL("/Applications/Application " + std::to_string(app) + ".app"),
                                  SweepCategory::apps));
            for (int j = 0; j < kLeftovers; ++j) {
                entries.push_back(row(leftoverURL(app, j), SweepCategory::apps));
            }
        }
        return entries;
    }
    if (kind == Kind::orphans) {
        for (int i = 0; i < kOrphansRemoved; ++i) {
            entries.push_back(row(orphanURL(i * (size / kOrphansRemoved)), SweepCategory::orphans));
        }
        return entries;
    }
    for (int i = 0; i < kRows; ++i) { // all over the library
        const int item = i * (size * kLeftovers / kRows);
        entries.push_back(row(kind == Kind::leftovers
                                  ? leftoverURL(item / kLeftovers, item % kLeftovers)
                                  : FileURL("/Users/alex/Downloads/file " + std::to_string(i)),
                              SweepCategory::caches));
    }
    return entries;
}

struct Lists {
    std::vector<InstalledApp> apps;
    std::vector<OrphanItem> orphans;
    std::vector<DevCacheItem> developerCaches;
};

struct Ports {
    TemporaryFolder disk;
    PosixFileSystem files{disk.path(), FileURL("/Users/alex")};
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    StepTaskRunner runner;
    ManualClock clock{runner};
    InstantTrash trash;
    RemovalFakes fakes;
    const Platform platform{files,     commands, metadata,      clock,         runner,
                            workspace, trash,    fakes.running, fakes.defaults};
};

// What the main thread used after each move, until it asked for the next one. What follows the last move is not
// in it: the operation is stored there.
std::vector<double> sweep(Ports& ports, const Lists& lists, const std::vector<SweepEntry>& entries) {
    AppLibrary library(ports.platform);
    library.apps = lists.apps;
    library.orphans = lists.orphans;
    library.developerCaches = lists.developerCaches;
    library.tasks().start([&](StopToken) -> Task<> { co_await library.runSweep(entries, "Clean Now"); });
    ports.runner.settle();
    std::vector<double> costs;
    while (costs.size() + 1 < entries.size()) {
        ports.runner.runJob();
        const auto begin = processorTime();
        ports.runner.settle();
        costs.push_back(Microseconds(processorTime() - begin).count());
    }
    ports.runner.runAll();
    return costs;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

double mean(const std::vector<double>& values, std::size_t from = 0) {
    return std::accumulate(values.begin() + static_cast<std::ptrdiff_t>(from), values.end(), 0.0) /
           static_cast<double>(values.size() - from);
}

// The figures of the rounds of one size, in microseconds.
struct Figures {
    std::vector<double> first;       // the first row of a sweep, which makes the index
    std::vector<double> leftover;    // each further row that the lists hold
    std::vector<double> stranger;    // the same for rows that they don't hold
    std::vector<double> orphan;      // each further row when orphans go
    std::vector<double> application; // each further row when applications go with all their leftovers
    std::vector<double> longest;     // of those: where an application itself goes
};

void measure(Ports& ports, int size, const Lists& lists, Figures& figures) {
    const auto leftovers = sweep(ports, lists, rows(Kind::leftovers, size));
    figures.first.push_back(leftovers.front());
    figures.leftover.push_back(mean(leftovers, 1));
    figures.stranger.push_back(mean(sweep(ports, lists, rows(Kind::strangers, size)), 1));
    figures.orphan.push_back(mean(sweep(ports, lists, rows(Kind::orphans, size)), 1));
    const auto applications = sweep(ports, lists, rows(Kind::applications, size));
    figures.application.push_back(mean(applications, 1));
    figures.longest.push_back(*std::ranges::max_element(applications.begin() + 1, applications.end()));
}

int run() {
    Ports ports;
    std::map<int, Lists> libraries;
    for (const int size : kSizes) {
        libraries[size] = {applications(size), orphans(size), developerCaches(size)};
    }
    std::map<int, Figures> figures;
    for (int round = 0; round < kRounds; ++round) {
        for (const int size : kSizes) {
            measure(ports, size, libraries[size], figures[size]);
        }
    }
    const auto& smallest = figures.at(kSizes.front());
    const auto print = [&](const char* what, std::vector<double> Figures::* figure) {
        fmt::print("{:44}", what);
        for (const int size : kSizes) {
            const double value = median(figures.at(size).*figure);
            fmt::print("  {:9.2f} us ({:6.2f})", value, value / median(smallest.*figure));
        }
        fmt::print("\n");
    };
    fmt::print("{:44}", "CPU of the main thread, medians (ratio)");
    for (const int size : kSizes) {
        fmt::print("  {:16} apps", size);
    }
    fmt::print("\n");
    print("a row of the lists", &Figures::leftover);
    print("a row that no list holds", &Figures::stranger);
    print("a row of the orphans", &Figures::orphan);
    print("the first row, which makes the index", &Figures::first);
    print("a row, applications and all they left", &Figures::application);
    print("the longest of those rows", &Figures::longest);
    const double growth =
        median(figures.at(kSizes.back()).leftover) / median(figures.at(kSizes.front()).leftover);
    return growth <= kMostGrowth ? 0 : 1;
}

} // namespace
} // namespace quillane

int main() {
    return quillane::run();
}
