// Reads the text of all documents below a folder as a search does, so many at once, and prints how many there are, how
// many of them have words, and the bytes of these.
#include "ContinuousClock.h"
#include "DocumentText.h"
#include "MainQueue.h"
#include "PosixCommandRunner.h"
#include "PosixFileSystem.h"
#include "WalkedPaths.h"
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

using namespace quillane;

std::vector<FileURL> filesBelow(const FileSystem& files, const FileURL& folder) {
    std::vector<FileURL> found;
    WalkedPaths paths(folder);
    const auto look = [&](const WalkEntry& entry) {
        auto url = paths.told(entry);
        if (entry.type == EntryType::regular) {
            found.push_back(std::move(url));
        }
        return WalkAnswer::proceed;
    };
    if (!files.walk(folder, {}, look)) {
        std::fputs("the folder can't be read\n", stderr);
    }
    return found;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: document_texts FOLDER THREADS\n", stderr);
        return 2;
    }
    const PosixFileSystem files;
    PosixCommandRunner programs;
    MainQueue queue;
    const ContinuousClock clock{queue};
    const DocumentText documents(files, programs, clock);
    const auto urls = filesBelow(files, FileURL(argv[1]));
    std::atomic<std::size_t> next = 0;
    std::atomic<std::size_t> withWords = 0;
    std::atomic<std::size_t> bytes = 0;
    const auto readSome = [&] {
        for (std::size_t i = next++; i < urls.size(); i = next++) {
            const auto extension = urls[i].pathExtension();
            const auto kind = documentKind(ContentTypes::ofFile(extension), extension);
            const auto text = documents.text(urls[i], kind, {});
            withWords += text.empty() ? 0 : 1;
            bytes += text.size();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < std::max(std::atoi(argv[2]), 1); ++i) {
        threads.emplace_back(readSome);
    }
    for (auto& thread : threads) {
        thread.join();
    }
    std::printf("%zu %zu %zu\n", urls.size(), withWords.load(), bytes.load());
    return 0;
}
