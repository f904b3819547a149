// What the main thread pays in a section's table: for a key that moves the selection, for letters of a search, and
// for a row that goes. `bench_tables` prints the figures of docs/performance.md.
#include "AppLibrary.h"
#include "Developer/DeveloperTable.h"
#include "RemovalWorld.h"
#include "State/ContentState.h"
#include "Tables/TableView.h"
#include <QCoreApplication>
#include <QKeyEvent>
#include <benchmark/benchmark.h>
#include <string>
#include <vector>

using namespace quillane;

namespace {

std::vector<DevCacheItem> locations(std::int64_t count) {
    std::vector<DevCacheItem> items(static_cast<std::size_t>(count));
    for (std::int64_t i = 0; i < count; ++i) {
        auto& item = items[static_cast<std::size_t>(i)];
        const std::string project = "project " + std::to_string(i);
        item.url = FileURL("/Users/alex/Projects/" + project + "/node_modules");
        item.tool = "npm / yarn / pnpm";
        item.kind = "node_modules in " + project;
        item.bytes = 1'000'000 + count - i;
    }
    return items;
}

// The table over so many rows, on the screen.
struct Shown {
    explicit Shown(std::int64_t rows) {
        library.phase = AppLibrary::Phase{AppLibrary::Phase::Kind::ready};
        library.developerCaches = locations(rows);
        table.resize(720, 700);
        table.show();
        QCoreApplication::processEvents();
    }

    RemovalWorld world;
    AppLibrary library{world.platform};
    ContentState state{LibrarySection::developer};
    DeveloperTable table{library, state};
};

// The keys that go a row down and up again in the middle, until the table is drawn again: two steps.
void selectUpAndDown(benchmark::State& state) {
    Shown shown(state.range(0));
    auto* const rows = shown.table.table();
    rows->setCurrentIndex(rows->model()->index(static_cast<int>(state.range(0) / 2), 0));
    for (auto _ : state) {
        for (const auto key : {Qt::Key_Down, Qt::Key_Up}) {
            QKeyEvent press(QEvent::KeyPress, key, {});
            QCoreApplication::sendEvent(rows, &press);
            QCoreApplication::processEvents();
        }
    }
}

// A search that leaves a tenth of the rows, and the whole list again.
void search(benchmark::State& state) {
    Shown shown(state.range(0));
    for (auto _ : state) {
        shown.library.searchText = "project 7";
        QCoreApplication::processEvents();
        shown.library.searchText = "";
        QCoreApplication::processEvents();
    }
}

// One row of the list goes, as during a sweep.
void dropRow(benchmark::State& state) {
    Shown shown(state.range(0));
    for (auto _ : state) {
        shown.library.developerCaches.modify([](auto& list) { list.erase(list.begin()); });
        QCoreApplication::processEvents();
        state.PauseTiming();
        if (shown.library.developerCaches->size() < static_cast<std::size_t>(state.range(0) / 2)) {
            shown.library.developerCaches = locations(state.range(0));
            QCoreApplication::processEvents();
        }
        state.ResumeTiming();
    }
}

BENCHMARK(selectUpAndDown)->Arg(100)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(search)->Arg(100)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(dropRow)->Arg(100)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMicrosecond);

} // namespace
