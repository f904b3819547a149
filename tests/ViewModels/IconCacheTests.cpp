#include "IconCache.h"
#include "LibraryTest.h"

namespace quillane {
namespace {

// The fixture attaches the cache to its platform.
class IconCacheTest : public LibraryTest {
  protected:
    IconCache& icons = IconCache::shared();
    const FileURL app{"/Applications/App.app"};
    const FileURL other{"/Applications/Other.app"};
};

TEST_F(IconCacheTest, AnIconComesOffTheMainThreadAndItsArrivalIsTold) {
    workspace.setIcon(app, FakeWorkspace::grey(10));
    const ChangeCounter arrivals([this] { (void)icons.latestArrival.get(); });
    EXPECT_EQ(icons.icon(app), nullptr);
    EXPECT_TRUE(workspace.iconRequests().empty()) << "nothing is decoded inside the call";
    runner.settle();
    ASSERT_EQ(runner.waitingJobs(), 1U);
    EXPECT_EQ(runner.waitingPriority(0), Priority::utility);
    runner.runAll();
    EXPECT_EQ(arrivals.changes, 1);
    EXPECT_EQ(*icons.latestArrival, app);
    ASSERT_NE(icons.icon(app), nullptr);
    EXPECT_EQ(*icons.icon(app), *FakeWorkspace::grey(10));
}

TEST_F(IconCacheTest, TheSideThatIsAskedForIsAlwaysTheSame) {
    (void)icons.icon(app);
    runner.runAll();
    EXPECT_EQ(workspace.iconRequests(), (std::vector{FakeWorkspace::IconRequest{app, 64}}));
}

TEST_F(IconCacheTest, AnIconIsAskedForOnceHoweverOftenItIsShown) {
    (void)icons.icon(app);
    (void)icons.icon(app);
    runner.runAll();
    (void)icons.icon(app);
    runner.runAll();
    EXPECT_EQ(workspace.iconRequests().size(), 1U);
    EXPECT_EQ(icons.count(), 1U);
}

TEST_F(IconCacheTest, ALocationThatDoesNotExistGetsTheGenericIconWhichIsCachedLikeAnyOther) {
    const FileURL nowhere("/nowhere");
    (void)icons.icon(nowhere);
    runner.runAll();
    EXPECT_EQ(icons.icon(nowhere), workspace.genericIcon());
    runner.runAll();
    EXPECT_EQ(workspace.iconRequests().size(), 1U);
    EXPECT_EQ(icons.count(), 1U);
}

TEST_F(IconCacheTest, PruningKeepsTheGivenLocationsOnly) {
    (void)icons.icon(app);
    (void)icons.icon(other);
    runner.runAll();
    icons.prune({app});
    EXPECT_EQ(icons.count(), 1U);
    EXPECT_NE(icons.icon(app), nullptr);
    EXPECT_EQ(icons.icon(other), nullptr) << "it is asked for anew";
}

TEST_F(IconCacheTest, PruningEverythingEmptiesTheCache) {
    (void)icons.icon(app);
    runner.runAll();
    icons.prune({});
    EXPECT_EQ(icons.count(), 0U);
}

TEST_F(IconCacheTest, AnIconPrunedWhileItIsDecodedIsDroppedWhenItComes) {
    const ChangeCounter arrivals([this] { (void)icons.latestArrival.get(); });
    (void)icons.icon(app);
    runner.settle();
    icons.prune({});
    runner.runAll();
    EXPECT_EQ(icons.count(), 0U);
    EXPECT_EQ(arrivals.changes, 0);
}

TEST_F(IconCacheTest, AnIconPrunedAndAskedForAgainArrivesThoughTheSameLocationCameLast) {
    (void)icons.icon(app);
    runner.runAll();
    icons.prune({});
    const ChangeCounter arrivals([this] { (void)icons.latestArrival.get(); });
    (void)icons.icon(app);
    runner.runAll();
    EXPECT_EQ(arrivals.changes, 1);
}

TEST_F(IconCacheTest, AttachingForgetsWhatIsCached) {
    (void)icons.icon(app);
    runner.runAll();
    icons.attach(&platform);
    EXPECT_EQ(icons.count(), 0U);
    EXPECT_EQ(icons.icon(app), nullptr);
    runner.runAll();
    EXPECT_NE(icons.icon(app), nullptr);
}

TEST_F(IconCacheTest, WithoutAPlatformThereAreNoIconsAndNothingIsKept) {
    icons.attach(nullptr);
    EXPECT_EQ(icons.icon(app), nullptr);
    EXPECT_EQ(icons.count(), 0U);
    runner.runAll();
}

// How far a load has come when the cache is detached: not begun, waiting in its pool, decoded.
class IconCacheDetach : public IconCacheTest, public testing::WithParamInterface<int> {};

TEST_P(IconCacheDetach, IconsInFlightNeverArrive) {
    const ChangeCounter arrivals([this] { (void)icons.latestArrival.get(); });
    (void)icons.icon(app);
    (void)icons.icon(other);
    if (GetParam() > 0) {
        runner.settle();
    }
    if (GetParam() > 1) {
        runner.runJob();
    }
    icons.attach(nullptr);
    runner.runAll();
    EXPECT_EQ(arrivals.changes, 0);
    EXPECT_EQ(icons.count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(EveryStage, IconCacheDetach, testing::Range(0, 3));

} // namespace
} // namespace quillane
