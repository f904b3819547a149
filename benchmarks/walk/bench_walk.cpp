// The walk and what is built on it, over a tree that is made for the run.
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "FootprintCalculator.h"
#include "ManualClock.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <benchmark/benchmark.h>
#include <string>

namespace quillane {
namespace {

constexpr int kFolders = 1'000;
constexpr int kFilesOfFolder = 20;

// 20,000 files in 1,000 folders on three levels, and one folder with a single file.
class Tree {
  public:
    static const Tree& shared() {
        static const Tree tree;
        return tree;
    }
    FileURL large() const { return m_folder.url("large"); }
    FileURL small() const { return m_folder.url("small"); }

  private:
    Tree() {
        m_folder.file("small/file", "content");
        for (int folder = 0; folder < kFolders; ++folder) {
            const auto path = "large/" + std::to_string(folder % 10) + "/" + std::to_string(folder / 10);
            for (int file = 0; file < kFilesOfFolder; ++file) {
                m_folder.file(path + "/a file of some name " + std::to_string(file),
                              file % 8 == 0 ? "content" : "");
            }
        }
    }
    TemporaryFolder m_folder;
};

void walkTree(benchmark::State& state, WalkOptions options) {
    const PosixFileSystem files;
    const auto root = Tree::shared().large();
    std::int64_t entries = 0;
    for ([[maybe_unused]] auto _ : state) {
        const auto result = files.walk(root, options, [&](const WalkEntry& entry) {
            benchmark::DoNotOptimize(entry.allocated);
            ++entries;
            return WalkAnswer::proceed;
        });
        if (!result) {
            state.SkipWithError("the tree can't be walked");
        }
    }
    state.SetItemsProcessed(entries);
}

void walkNames(benchmark::State& state) {
    walkTree(state, {});
}
BENCHMARK(walkNames)->Unit(benchmark::kMillisecond);

void walkMeasuring(benchmark::State& state) {
    walkTree(state, {.measures = true});
}
BENCHMARK(walkMeasuring)->Unit(benchmark::kMillisecond);

void measureFootprint(benchmark::State& state, const FileURL& root) {
    PosixFileSystem files;
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    StepTaskRunner runner;
    ManualClock clock{runner};
    RemovalFakes fakes;
    const Platform platform{files,     commands,    metadata,      clock,         runner,
                            workspace, fakes.trash, fakes.running, fakes.defaults};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(FootprintCalculator::size(platform, root));
    }
}

void footprintOfLargeFolder(benchmark::State& state) {
    measureFootprint(state, Tree::shared().large());
}
BENCHMARK(footprintOfLargeFolder)->Unit(benchmark::kMillisecond);

// What most leftovers are: the fixed costs of a walk.
void footprintOfSmallFolder(benchmark::State& state) {
    measureFootprint(state, Tree::shared().small());
}
BENCHMARK(footprintOfSmallFolder)->Unit(benchmark::kMicrosecond);

void listFolder(benchmark::State& state) {
    const PosixFileSystem files;
    const auto folder = Tree::shared().large().appending("1/1");
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(files.list(folder));
    }
}
BENCHMARK(listFolder)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace quillane
