// Prints the developer caches of a home folder as the program finds them, on real threads: bytes and path.
#include "ContinuousClock.h"
#include "DeveloperCacheFinder.h"
#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "MainQueue.h"
#include "PosixFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "ThreadTaskRunner.h"
#include <cstdio>
#include <latch>

int main(int argc, char** argv) {
    using namespace quillane;
    if (argc != 2) {
        std::fputs("usage: developer_caches HOME\n", stderr);
        return 2;
    }
    PosixFileSystem files{"/", FileURL(argv[1])};
    ScriptedCommandRunner commands;
    FakeMetadata metadata;
    FakeWorkspace workspace;
    RemovalFakes fakes;
    MainQueue queue;
    ContinuousClock clock{queue};
    ThreadTaskRunner threads{queue};
    const Platform platform{files,     commands,    metadata,      clock,         threads,
                            workspace, fakes.trash, fakes.running, fakes.defaults};
    // As in the program: a job of the pool, helped by others of the same pool.
    std::latch ended(1);
    threads.run(Priority::userInitiated, [&] {
        for (const auto& item : DeveloperCacheFinder::find(platform, Priority::userInitiated)) {
            std::printf("%lld\t%s\n", static_cast<long long>(item.bytes), item.url.path().c_str());
        }
        ended.count_down();
    });
    ended.wait();
    return 0;
}
