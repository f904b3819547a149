// The room of a volume whose size is known, mounted in a process of its own.
#include "OwnVolume.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace quillane {
namespace {

constexpr Bytes kSize = Bytes{8} << 20;
constexpr Bytes kFile = Bytes{1} << 20;

// 0 when all was well; otherwise which of the questions below had another answer.
int firstWrongAnswer(DiskFolder& disk, const FileSystem& files, const FileURL& volume) {
    const auto before = files.volumeSpace(volume).valueOr({});
    if (before.size != kSize) {
        return 1;
    }
    disk.allocated("volume/file", kFile);
    const auto after = files.volumeSpace(volume).valueOr({});
    if (after.size != kSize) {
        return 2;
    }
    if (before.free - after.free < kFile || before.free > kSize) {
        return 3;
    }
    return files.volumeSpace(volume.deletingLastPathComponent()).valueOr({}).size == kSize ? 4 : 0;
}

TEST(VolumeSpace, IsThatOfTheVolumeOnWhichTheFolderLiesAndShrinksAsItFills) {
    testing::FLAGS_gtest_death_test_style = "fast";
    for (const bool isRooted : {false, true}) {
        TemporaryFolder disk;
        disk.folder("volume");
        EXPECT_EXIT(
            {
                mountOwnVolume(disk.path() + "/volume");
                const PosixFileSystem machine;
                const PosixFileSystem rooted(disk.path(), FileURL("/"));
                std::_Exit(isRooted ? firstWrongAnswer(disk, rooted, FileURL("/volume"))
                                    : firstWrongAnswer(disk, machine, disk.url("volume")));
            },
            testing::ExitedWithCode(0), "")
            << isRooted;
    }
}

} // namespace
} // namespace quillane
