#include "RemovalWorld.h"
#include "TrashSweeper.h"
#include <algorithm>
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct TrashSweeperTest : testing::Test {
    RemovalWorld world;
    TrashSweeper::State measure() const { return TrashSweeper::measure(world.platform); }
    Uninstaller::Report empty() const { return TrashSweeper::empty(world.platform); }
};

TEST_F(TrashSweeperTest, AnEmptyTrashMeasuresNothing) {
    EXPECT_EQ(measure(), TrashSweeper::State::measured(0, 0));
    world.disk.folder("Users/alex/.Trash");
    EXPECT_EQ(measure(), TrashSweeper::State::measured(0, 0));
}

TEST_F(TrashSweeperTest, AFolderWithAThousandFilesIsOneItem) {
    for (int i = 0; i < 1000; ++i) {
        world.disk.file("Users/alex/.Trash/folder/" + std::to_string(i), "x");
    }
    const auto state = measure();
    EXPECT_EQ(state.count, 1);
    EXPECT_EQ(state.bytes, 1000 * 4096);
}

TEST_F(TrashSweeperTest, HiddenFilesAloneCountToo) {
    world.disk.file("Users/alex/.Trash/.DS_Store", "x");
    EXPECT_EQ(measure().count, 1);
    EXPECT_EQ(empty().trashed.size(), 1U);
    EXPECT_EQ(measure().count, 0);
}

TEST_F(TrashSweeperTest, AListingThatIsRefusedForWhateverReasonNeedsAccess) {
    for (const auto& error : {PlatformError{257, 1}, PlatformError{256, 5}, PlatformError{260, 2}}) {
        world.trash.refuseListing(error);
        EXPECT_EQ(measure(), TrashSweeper::State::refused());
    }
}

TEST_F(TrashSweeperTest, EmptyingDeletesEveryItemAndCreditsItsSize) {
    world.disk.allocated("Users/alex/.Trash/a", 8192).allocated("Users/alex/.Trash/b/c", 4096);
    const auto report = empty();
    EXPECT_EQ(report.trashed.size(), 2U);
    EXPECT_EQ(report.reclaimedBytes, 12288);
    EXPECT_TRUE(report.moves.empty());
    EXPECT_EQ(measure(), TrashSweeper::State::measured(0, 0));
}

TEST_F(TrashSweeperTest, AnItemThatCannotBeDeletedDoesNotStopTheOthers) {
    world.disk.file("Users/alex/.Trash/a", "x")
        .file("Users/alex/.Trash/b", "x")
        .file("Users/alex/.Trash/c", "x");
    world.trash.failStep(1, {ErrorCode::kWriteNoPermission, 1});
    const auto report = empty();
    EXPECT_EQ(report.trashed.size(), 2U);
    ASSERT_EQ(report.failures.size(), 1U);
    EXPECT_EQ(report.failures[0].reason, "No access");
    EXPECT_EQ(report.reclaimedBytes, 8192);
    EXPECT_TRUE(world.isThere(report.failures[0].url));
}

TEST_F(TrashSweeperTest, ATrashThatCannotBeListedIsNotEmptiedAndReadsNoAccess) {
    world.disk.file("Users/alex/.Trash/a", "x");
    world.trash.refuseListing(PlatformError{257, 1});
    const auto report = empty();
    EXPECT_TRUE(report.trashed.empty());
    EXPECT_EQ(report.failures,
              (std::vector{Uninstaller::Failure{FileURL("/Users/alex/.Trash"), "No access", true}}));
    EXPECT_TRUE(world.isThere(FileURL("/Users/alex/.Trash/a")));
}

TEST_F(TrashSweeperTest, ARefusalOfATrashThatIsGoneByThenNamesTheRoot) {
    world.trash.refuseListing(PlatformError{257, 1});
    EXPECT_EQ(empty().failures, (std::vector{Uninstaller::Failure{FileURL("/"), "No access", true}}));
}

} // namespace
} // namespace quillane
