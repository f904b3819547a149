// Prints what the embedded search answers to a query about folders, on real threads, as the program asks it.
#include "ContinuousClock.h"
#include "FakeMetadata.h"
#include "MainQueue.h"
#include "MetadataSearch.h"
#include "PosixFileSystem.h"
#include "ThreadTaskRunner.h"
#include <cstdio>
#include <latch>

int main(int argc, char** argv) {
    using namespace quillane;
    if (argc < 3) {
        std::fputs("usage: search_files QUERY FOLDER...\n", stderr);
        return 2;
    }
    const PosixFileSystem files;
    const FakeMetadata metadata;
    MainQueue queue;
    const ContinuousClock clock{queue};
    ThreadTaskRunner threads{queue};
    const MetadataSearch search(files, metadata, clock, {}, {.threads = &threads});
    std::latch ended(1);
    threads.run(Priority::userInitiated, [&] {
        for (int i = 2; i < argc; ++i) {
            const auto text = search.answer({"-onlyin", argv[i], argv[1]});
            std::fwrite(text.data(), 1, text.size(), stdout);
        }
        ended.count_down();
    });
    ended.wait();
    return 0;
}
