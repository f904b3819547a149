#include "TemporaryFolder.h"
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quillane {
namespace {

std::string makeTemporary() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quillane-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        std::perror(pattern.c_str());
        std::abort();
    }
    return pattern;
}

} // namespace

TemporaryFolder::TemporaryFolder()
    : DiskFolder(makeTemporary()) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path(), ignored);
}

} // namespace quillane
