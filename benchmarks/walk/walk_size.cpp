// Prints the allocated bytes of all regular files below a folder, by the product's walk.
#include "PosixFileSystem.h"
#include <cstdio>

int main(int argc, char** argv) {
    using namespace quillane;
    if (argc != 2) {
        std::fputs("usage: walk_size FOLDER\n", stderr);
        return 2;
    }
    Bytes sum = 0;
    const auto add = [&](const WalkEntry& entry) {
        sum = checkedSum(sum, entry.allocated);
        return WalkAnswer::proceed;
    };
    if (!PosixFileSystem().walk(FileURL(argv[1]), {.measures = true}, add)) {
        return 1;
    }
    std::printf("%lld\n", static_cast<long long>(sum));
    return 0;
}
