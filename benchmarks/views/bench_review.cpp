#include "AppLibrary.h"
#include "RemovalWorld.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include <QCoreApplication>
#include <QKeyEvent>
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

using namespace quillane;

namespace {

std::vector<SweepEntry> rows(std::int64_t count) {
    std::vector<SweepEntry> entries;
    entries.reserve(static_cast<std::size_t>(count));
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string name = "com.example.app" + std::to_string(i);
        entries.push_back({FileURL("/Users/alex/Library/Caches/" + name),
                           i % 3 == 0 ? SweepCategory::orphans : SweepCategory::caches,
                           "Application " + std::to_string(i), "Caches - " + name, 1'200'000 + i});
    }
    return entries;
}

std::unique_ptr<SweepPreviewSheet> opened(AppLibrary& library, std::vector<SweepEntry> entries) {
    auto sheet = std::make_unique<SweepPreviewSheet>(
        library, std::move(entries), std::unordered_set<FileURL>{},
        [](std::vector<SweepEntry>) -> Task<SweepReport> { co_return SweepReport{}; });
    sheet->show();
    QCoreApplication::processEvents();
    return sheet;
}

// From the request to the first picture on the screen.
void openSheet(benchmark::State& state) {
    RemovalWorld world;
    AppLibrary library(world.platform);
    const auto entries = rows(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = entries;
        state.ResumeTiming();
        auto sheet = opened(library, std::move(copy));
        benchmark::DoNotOptimize(sheet->grab());
        state.PauseTiming();
        sheet.reset();
        state.ResumeTiming();
    }
}

// One press of the space bar on a row in the middle, until the sheet is drawn again.
void tickRow(benchmark::State& state) {
    RemovalWorld world;
    AppLibrary library(world.platform);
    const auto sheet = opened(library, rows(state.range(0)));
    auto* list = sheet->reviewStage()->list();
    list->setCurrentIndex(sheet->model().indexOfEntry(static_cast<std::size_t>(state.range(0) / 2)));
    QCoreApplication::processEvents();
    for (auto _ : state) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "));
        QCoreApplication::sendEvent(list, &press);
        QCoreApplication::processEvents();
    }
}

// A picture of the sheet: what scrolling costs for each step.
void drawSheet(benchmark::State& state) {
    RemovalWorld world;
    AppLibrary library(world.platform);
    const auto sheet = opened(library, rows(state.range(0)));
    for (auto _ : state) {
        sheet->reviewStage()->list()->viewport()->repaint();
    }
}

BENCHMARK(openSheet)->Arg(100)->Arg(2'000)->Arg(20'000)->Unit(benchmark::kMillisecond);
BENCHMARK(tickRow)->Arg(100)->Arg(20'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(drawSheet)->Arg(100)->Arg(20'000)->Unit(benchmark::kMicrosecond);

} // namespace
