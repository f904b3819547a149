#include "HomePath.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(HomePath, TheHomeFolderIsATildeWhereverItsPathOccurs) {
    const FileURL home("/Users/alex");
    EXPECT_EQ(pathWithHomeAsTilde(FileURL("/Users/alex/.npm"), home), "~/.npm");
    EXPECT_EQ(pathWithHomeAsTilde(FileURL("/Volumes/Disk/Users/alex/Users/alex"), home), "/Volumes/Disk~~");
    EXPECT_EQ(pathWithHomeAsTilde(FileURL("/Library"), home), "/Library");
}

} // namespace
} // namespace quillane
