// Deletes a folder with all it holds, as emptying the Trash does.
#include "Descriptor.h"
#include "FileRemover.h"
#include "FileURL.h"
#include <cstdio>
#include <fcntl.h>
#include <string>

int main(int argc, char** argv) {
    using namespace quillane;
    if (argc != 2) {
        std::fputs("usage: empty_folder FOLDER\n", stderr);
        return 2;
    }
    const FileURL url(argv[1]);
    const Descriptor above(
        ::open(url.deletingLastPathComponent().path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!above) {
        std::perror(argv[1]);
        return 1;
    }
    const auto removed = FileRemover::removeTree(above.get(), std::string(url.lastPathComponent()));
    if (!removed) {
        std::fprintf(stderr, "%s: error %d\n", argv[1], removed.error().underlying.value_or(0));
        return 1;
    }
    return 0;
}
