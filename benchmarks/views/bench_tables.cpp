// What the main thread pays in a section's table for a key that moves the selection, for letters of a search and for
// rows that go, until the whole window is drawn again: table, footer, pane and sidebar. Every section holds as many
// rows as the one that is looked at. `bench_tables` prints the figures of docs/performance.md: CPU time, "typical"
// the median and "worst" the dearest of all frames.
#include "AppLibrary.h"
#include "NotificationCenter.h"
#include "ProcessorTime.h"
#include "RemovalWorld.h"
#include "Shell/ContentView.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <string>
#include <vector>

using namespace quillane;

namespace {

constexpr std::array kTables = {LibrarySection::applications, LibrarySection::orphans,
                                LibrarySection::developer, LibrarySection::duplicates};

std::string numbered(const char* word, std::size_t number) {
    return word + std::to_string(number);
}

std::vector<InstalledApp> applications(std::size_t count) {
    std::vector<InstalledApp> apps(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto& app = apps[i];
        app.name = numbered("Project ", i);
        app.url = FileURL("/Applications/" + app.name + ".app");
        app.bundleIdentifier = numbered("com.example.project", i);
        app.source = AppSource::applications;
        app.bundleBytes = static_cast<Bytes>(1'000'000 + i * 7919 % count);
        app.isMeasured = true;
    }
    return apps;
}

std::vector<OrphanItem> orphans(std::size_t count) {
    std::vector<OrphanItem> items(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto& item = items[i];
        item.vendor = numbered("com.project", i);
        item.identifier = item.vendor + ".tool";
        item.category = "Caches";
        item.url = FileURL("/Users/alex/Library/Caches/" + item.identifier);
        item.bytes = static_cast<Bytes>(1'000'000 + count - i);
    }
    return items;
}

std::vector<DevCacheItem> locations(std::size_t count) {
    std::vector<DevCacheItem> items(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto& item = items[i];
        const std::string project = numbered("project ", i);
        item.url = FileURL("/Users/alex/Projects/" + project + "/node_modules");
        item.tool = "npm / yarn / pnpm";
        item.kind = "node_modules in " + project;
        item.bytes = static_cast<Bytes>(1'000'000 + count - i);
        item.safeToSweep = i % 2 == 0;
        item.consequence = "The project does not run until its dependencies are installed again.";
    }
    return items;
}

std::vector<DuplicateGroup> groups(std::size_t count, std::size_t copiesOfEach = 2) {
    std::vector<DuplicateGroup> found(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto& group = found[i];
        group.id = numbered("", i);
        group.bytesEach = static_cast<Bytes>(1'000'000 + count - i);
        for (std::size_t copy = 0; copy < copiesOfEach; ++copy) {
            UserFile file;
            file.url =
                FileURL(numbered("/Users/alex/Documents/folder ", copy) + numbered("/Project ", i) + ".mov");
            file.kind = UserFile::Kind::video;
            file.bytes = group.bytesEach;
            file.lastUsed = Date::fromUnix(1'700'000'000 - 86'400 * static_cast<std::int64_t>(copy));
            group.files.push_back(std::move(file));
        }
    }
    return found;
}

std::vector<UserFile> userFiles(std::size_t count) {
    std::vector<UserFile> files(count);
    for (std::size_t i = 0; i < count; ++i) {
        auto& file = files[i];
        file.url =
            FileURL(numbered("/Users/alex/Documents/folder ", i % 500) + numbered("/Project ", i) + ".mov");
        file.kind = UserFile::Kind::video;
        file.bytes = static_cast<Bytes>(100'000'000 + i * 7919 % count);
        file.logicalBytes = file.bytes;
        file.lastUsed = Date::fromUnix(1'700'000'000 - 3'600 * static_cast<std::int64_t>(i));
    }
    return files;
}

// The window in a section, on the screen.
class Shown {
  public:
    explicit Shown(const benchmark::State& state)
        : Shown(kTables[static_cast<std::size_t>(state.range(0))], static_cast<std::size_t>(state.range(1))) {
    }
    Shown(LibrarySection section, std::size_t count)
        : m_section(section)
        , m_count(count) {
        m_window.state().showOnboarding = false; // nobody is to be welcomed here
        library.phase = AppLibrary::Phase{AppLibrary::Phase::Kind::ready};
        library.apps = applications(m_count);
        library.orphans = orphans(m_count);
        library.developerCaches = locations(m_count);
        library.duplicates = groups(m_count);
        m_window.resize(1180, 740);
        m_window.show();
        m_window.enterSection(m_section);
        QCoreApplication::processEvents();
    }

    TableView& table() const { return *static_cast<SectionTable*>(m_window.content(m_section))->table(); }
    void select(int row) const { table().setCurrentIndex(table().model()->index(row, 0)); }
    // As when a sweep moved it: the row that stands here in the library's list.
    void drop(std::size_t place) {
        const auto dropFrom = [place](auto& list) {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(place % list.size()));
        };
        switch (m_section) {
        case LibrarySection::applications:
            return library.apps.modify(dropFrom);
        case LibrarySection::orphans:
            return library.orphans.modify(dropFrom);
        case LibrarySection::duplicates:
            return library.duplicates.modify(dropFrom);
        default:
            return library.developerCaches.modify(dropFrom);
        }
    }

  private:
    RemovalWorld m_world;

  public:
    AppLibrary library{m_world.platform};

  private:
    NotificationCenter m_notifications;
    LibrarySection m_section;
    std::size_t m_count;
    ContentView m_window{library, m_notifications};
};

// Measures frames, from a change to the picture after it.
class Frames {
  public:
    explicit Frames(benchmark::State& state)
        : m_state(state) {}
    ~Frames() {
        std::ranges::sort(m_milliseconds);
        m_state.counters["typical"] = m_milliseconds[m_milliseconds.size() / 2];
        m_state.counters["worst"] = m_milliseconds.back();
    }
    Frames(const Frames&) = delete;
    Frames& operator=(const Frames&) = delete;

    template <class Change>
    void measure(Change change) {
        const auto begin = processorTime();
        change();
        QCoreApplication::processEvents();
        const std::chrono::duration<double, std::milli> used = processorTime() - begin;
        m_milliseconds.push_back(used.count());
    }

  private:
    benchmark::State& m_state;
    std::vector<double> m_milliseconds;
};

// The keys that go a row down and up again in the middle.
void selectUpAndDown(benchmark::State& state) {
    Shown shown(state);
    shown.select(static_cast<int>(state.range(1) / 2));
    Frames frames(state);
    for (auto _ : state) {
        for (const auto key : {Qt::Key_Down, Qt::Key_Up}) {
            frames.measure([&] {
                QKeyEvent press(QEvent::KeyPress, key, {});
                QCoreApplication::sendEvent(&shown.table(), &press);
            });
        }
    }
}

void typeAndClear(benchmark::State& state, const char* text) {
    Shown shown(state);
    Frames frames(state);
    for (auto _ : state) {
        frames.measure([&] { shown.library.searchText = text; });
        frames.measure([&] { shown.library.searchText = ""; });
    }
}

// A letter that about a third of the rows have, all over the list.
void searchLetter(benchmark::State& state) {
    typeAndClear(state, "7");
}

// A word that a tenth of the rows have, in few places.
void searchWord(benchmark::State& state) {
    typeAndClear(state, "project 7");
}

// One row of the list goes, as during a sweep.
void dropRow(benchmark::State& state) {
    Shown shown(state);
    shown.select(2);
    Frames frames(state);
    for (auto _ : state) {
        frames.measure([&] { shown.drop(5); });
    }
}

// The same with the rows by name.
void dropRowByName(benchmark::State& state) {
    Shown shown(state);
    shown.table().header()->setSortIndicator(0, Qt::AscendingOrder);
    QCoreApplication::processEvents();
    Frames frames(state);
    for (auto _ : state) {
        frames.measure([&] { shown.drop(5); });
    }
}

// Another group of as many copies comes into the pane.
void openGroup(benchmark::State& state) {
    Shown shown(LibrarySection::duplicates, 0);
    shown.library.duplicates = groups(2, static_cast<std::size_t>(state.range(0)));
    QCoreApplication::processEvents();
    shown.select(0);
    QCoreApplication::processEvents();
    int row = 0;
    Frames frames(state);
    for (auto _ : state) {
        row = 1 - row;
        frames.measure([&] { shown.select(row); });
    }
}

// What a finder has found comes into the empty table of the files.
void fillFiles(benchmark::State& state) {
    Shown shown(LibrarySection::files, 0);
    const auto found = userFiles(static_cast<std::size_t>(state.range(0)));
    Frames frames(state);
    for (auto _ : state) {
        shown.library.files = std::vector<UserFile>();
        shown.library.isLoadingFiles = true;
        QCoreApplication::processEvents();
        frames.measure([&] {
            shown.library.files = found;
            shown.library.isLoadingFiles = false;
        });
        if (shown.table().model()->rowCount() != static_cast<int>(found.size())) {
            state.SkipWithError("the table is not full");
            break;
        }
    }
}

// As many frames of each, so that the dearest of them are those of as many; a row less each time is no shorter list.
void tables(benchmark::internal::Benchmark* program) {
    program->ArgNames({"table", "rows"})
        ->ArgsProduct({{0, 1, 2, 3}, {1'000, 20'000}})
        ->Iterations(60)
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(selectUpAndDown)->Apply(tables);
BENCHMARK(searchLetter)->Apply(tables);
BENCHMARK(searchWord)->Apply(tables);
BENCHMARK(dropRow)->Apply(tables);
BENCHMARK(dropRowByName)->Apply(tables);
BENCHMARK(fillFiles)->ArgName("rows")->Arg(1'000)->Arg(20'000)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(openGroup)->ArgName("copies")->Arg(3)->Arg(500)->Arg(5'000)->Iterations(60)->Unit(
    benchmark::kMillisecond);

} // namespace
