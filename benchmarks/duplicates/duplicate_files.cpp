// Prints the copies below a folder as the program tells them apart, on real threads: one line of paths for each
// group. The sizes come from a walk, which stands in for the search.
#include "ContentComparison.h"
#include "ContinuousClock.h"
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "MainQueue.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "ThreadTaskRunner.h"
#include "WalkedPaths.h"
#include <cstdio>
#include <cstdlib>
#include <latch>
#include <map>
#include <vector>

namespace {

using namespace quillane;

std::map<Bytes, std::vector<FileURL>> filesBelow(const FileSystem& files, const FileURL& folder,
                                                 Bytes smallest) {
    std::map<Bytes, std::vector<FileURL>> bySize;
    WalkedPaths paths(folder);
    const auto look = [&](const WalkEntry& entry) {
        const auto url = paths.told(entry);
        const auto values = files.resourceValues(url);
        if (entry.type == EntryType::regular && values && values->fileSize >= smallest) {
            bySize[values->fileSize].push_back(url);
        }
        return WalkAnswer::proceed;
    };
    if (!files.walk(folder, {}, look)) {
        std::fputs("the folder can't be read\n", stderr);
    }
    return bySize;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fputs("usage: duplicate_files FOLDER [BYTES-OF-THE-SMALLEST]\n", stderr);
        return 2;
    }
    const Bytes smallest = argc == 3 ? std::atoll(argv[2]) : 1'000'000;
    PosixFileSystem files;
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    RemovalFakes fakes;
    MainQueue queue;
    ContinuousClock clock{queue};
    ThreadTaskRunner threads{queue};
    const Platform platform{files,     commands,    metadata,      clock,         threads,
                            workspace, fakes.trash, fakes.running, fakes.defaults};
    // As in the program: a job of the pool, helped by another of the same pool.
    std::latch ended(1);
    threads.run(Priority::userInitiated, [&] {
        const auto bySize = filesBelow(files, FileURL(argv[1]), smallest);
        for (const auto& equal :
             ContentComparison::equalFiles(platform, Priority::userInitiated, bySize, {})) {
            for (const auto* const url : equal.urls) {
                std::printf("%s%c", url->path().c_str(), url == equal.urls.back() ? '\n' : '\t');
            }
        }
        ended.count_down();
    });
    ended.wait();
    return 0;
}
