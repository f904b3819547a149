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

TEST(HomePath, ALeadingTildeIsTheHomeFolder) {
    const FileURL home("/Users/alex");
    EXPECT_EQ(expandingTilde("~/bin/tool", home), "/Users/alex/bin/tool");
    EXPECT_EQ(expandingTilde("~", home), "/Users/alex");
}

TEST(HomePath, ATildeElsewhereOrBeforeANameStays) {
    const FileURL home("/Users/alex");
    for (const std::string path : {"~alex/bin/tool", "/a/~/b", "a~", " ~/a", ""}) {
        EXPECT_EQ(expandingTilde(path, home), path);
    }
}

} // namespace
} // namespace quillane
