#include "TemporaryFolder.h"
#include "TreeRemoval.h"
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

std::string makeTemporary() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillane-XXXXXX").string();
    char resolved[PATH_MAX] = {};
    // Open to others, so that a test can look at it as an ordinary user.
    if (::mkdtemp(pattern.data()) == nullptr || ::chmod(pattern.c_str(), 0755) != 0 ||
        ::realpath(pattern.c_str(), resolved) == nullptr) {
        std::perror(pattern.c_str());
        std::abort();
    }
    return resolved;
}

} // namespace

TemporaryFolder::TemporaryFolder()
    : DiskFolder(makeTemporary()) {}

TemporaryFolder::~TemporaryFolder() {
    removeTree(path());
}

} // namespace quillane
