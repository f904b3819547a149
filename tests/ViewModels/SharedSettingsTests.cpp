// Two starts of the program over one settings file: neither undoes what the other has stored.
#include "DefaultsKeys.h"
#include "StoredRecords.h"
#include "SweepTest.h"
#include <gmock/gmock.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SharedSettings : public SweepTest {
  protected:
    static RecentUninstall record(const std::string& name) {
        return {name, "com.acme." + name, Date{700'000'000}, {}};
    }
    void store(const std::vector<RecentUninstall>& records) {
        world.defaults.set(DefaultsKeys::kRecentUninstalls, *StoredRecords::encode(records));
    }
    std::vector<std::string> storedPaths() const {
        return world.defaults.stringArray(DefaultsKeys::kProtectedPaths).value_or(std::vector<std::string>());
    }
    std::vector<RecentUninstall> storedRecords() const {
        return StoredRecords::decodeRecentUninstalls(*world.defaults.data(DefaultsKeys::kRecentUninstalls))
            .value();
    }
    // What is stored as the operation that can be put back; empty for none.
    std::string storedLabel() const {
        const auto data = world.defaults.data(DefaultsKeys::kLastOperation);
        return data ? StoredRecords::decodeUndoableOperation(*data)->label : "";
    }
    static std::string labelOf(const AppLibrary& library) {
        return library.lastOperation->has_value() ? (*library.lastOperation)->label : "";
    }
    void otherSweeps(const FileURL& url, const std::string& label) {
        other->tasks().start([this, url, label](StopToken) -> Task<> {
            co_await other->runSweep({entry(url, SweepCategory::files, 1)}, label);
        });
        world.runner.runAll();
    }
    void otherUndoes() {
        other->tasks().start([this](StopToken) -> Task<> { co_await other->undoLastOperation(); });
        world.runner.runAll();
    }

    std::unique_ptr<AppLibrary> other = std::make_unique<AppLibrary>(world.platform);
};

// Protection

TEST_F(SharedSettings, WhatEachProtectsStaysProtected) {
    library->setProtected(FileURL("/a"), true);
    other->setProtected(FileURL("/b"), true);
    library->setProtected(FileURL("/c"), true);
    EXPECT_THAT(storedPaths(), ElementsAre("/a", "/b", "/c"));
    EXPECT_TRUE(library->isProtected(FileURL("/b")));
}

TEST_F(SharedSettings, WhatOneLiftsIsLiftedAndNothingElse) {
    library->setProtected({FileURL("/a"), FileURL("/b")}, true);
    other->setProtected(FileURL("/c"), true);
    other->setProtected(FileURL("/a"), false);
    library->setProtected(FileURL("/d"), true);
    EXPECT_THAT(storedPaths(), ElementsAre("/b", "/c", "/d"));
    EXPECT_FALSE(library->isProtected(FileURL("/a")));
}

TEST_F(SharedSettings, WhatTheOtherProtectsDuringASweepIsNotMoved) {
    const auto first = file("first");
    const auto second = file("second");
    startSweep({entry(first, SweepCategory::files, 1), entry(second, SweepCategory::files, 1)});
    world.runner.settle();
    ASSERT_EQ(world.runner.waitingJobs(), 1U); // the first row's
    other->setProtected(second, true);
    world.runner.runAll();
    EXPECT_FALSE(world.isThere(first));
    EXPECT_TRUE(world.isThere(second));
    EXPECT_EQ(report.value().itemsMovedToTrash, 1);
    EXPECT_TRUE(report.value().failures.empty());
    EXPECT_EQ(*library->sweepProcessed, 1);
}

TEST_F(SharedSettings, WhatIsLostFromTheSettingsStaysProtectedAndIsStoredAgain) {
    library->setProtected(FileURL("/a"), true);
    world.defaults.clear(DefaultsKeys::kProtectedPaths);
    library->appBecameActive();
    EXPECT_TRUE(library->isProtected(FileURL("/a")));
    library->setProtected(FileURL("/b"), true);
    EXPECT_THAT(storedPaths(), ElementsAre("/a", "/b"));
}

TEST_F(SharedSettings, TheWindowThatComesToTheFrontShowsWhatTheOtherHasStored) {
    store({record("alpha")});
    other->setProtected(FileURL("/a"), true);
    otherSweeps(file("item"), "Other");
    library->appBecameActive();
    EXPECT_TRUE(library->isProtected(FileURL("/a")));
    EXPECT_EQ(labelOf(*library), "Other");
    EXPECT_THAT(*library->recentUninstalls, ElementsAre(record("alpha")));
}

// Operations

TEST_F(SharedSettings, TheOperationThatIsStoredLastIsTheOneThatIsPutBack) {
    const auto own = file("own");
    const auto others = file("others");
    sweep({entry(own, SweepCategory::files, 1)}, "Own");
    otherSweeps(others, "Other");
    EXPECT_EQ(storedLabel(), "Other");
    EXPECT_EQ(undo().trashed.size(), 1U);
    EXPECT_TRUE(world.isThere(others));
    EXPECT_FALSE(world.isThere(own));
    EXPECT_EQ(storedLabel(), "");
    EXPECT_EQ(labelOf(*library), "");
}

TEST_F(SharedSettings, WhatTheOtherHasPutBackIsNotTriedAgain) {
    const auto own = file("own");
    sweep({entry(own, SweepCategory::files, 1)}, "Own");
    other->appBecameActive();
    otherUndoes();
    EXPECT_TRUE(world.isThere(own));
    const auto report = undo();
    EXPECT_TRUE(report.trashed.empty());
    EXPECT_TRUE(report.failures.empty());
    EXPECT_EQ(labelOf(*library), "");
    EXPECT_EQ(library->phase->kind, AppLibrary::Phase::Kind::idle); // no scan
}

TEST_F(SharedSettings, AnOperationThatTheOtherRecordsDuringAPutBackStays) {
    sweep({entry(file("own"), SweepCategory::files, 1)}, "Own");
    const auto others = file("others");
    other->appBecameActive();
    // Both wait: the move of the other's row and the put back, which began later.
    other->tasks().start([&](StopToken) -> Task<> {
        co_await other->runSweep({entry(others, SweepCategory::files, 1)}, "Other");
    });
    world.runner.settle();
    library->tasks().start([&](StopToken) -> Task<> { co_await library->undoLastOperation(); });
    world.runner.settle();
    ASSERT_EQ(world.runner.waitingJobs(), 2U);
    world.runner.runAll();
    EXPECT_TRUE(world.isThere(home("own")));
    EXPECT_EQ(storedLabel(), "Other");
    EXPECT_EQ(labelOf(*library), "Other");
    EXPECT_EQ(undo().trashed.size(), 1U);
    EXPECT_TRUE(world.isThere(others));
}

TEST_F(SharedSettings, WhatTheOtherRecordsDuringASweepIsNotShownBeforeItsEnd) {
    startSweep({entry(file("own"), SweepCategory::files, 1)}, "Own");
    world.runner.settle();
    world.defaults.set(DefaultsKeys::kLastOperation,
                       *StoredRecords::encode(UndoableOperation{"Other", Date{1}, {}, 0}));
    library->appBecameActive();
    EXPECT_EQ(labelOf(*library), "");
    world.runner.runAll();
    EXPECT_EQ(labelOf(*library), "Own");
    EXPECT_EQ(storedLabel(), "Own"); // which ended last
}

TEST_F(SharedSettings, AnOperationThatIsLostWithTheSettingsCanStillBePutBack) {
    const auto own = file("own");
    sweep({entry(own, SweepCategory::files, 1)}, "Own");
    world.defaults.lose();
    library->appBecameActive();
    EXPECT_EQ(labelOf(*library), "Own");
    world.defaults.set(DefaultsKeys::kThresholdGB, std::int64_t{5}); // the next change makes new settings
    EXPECT_EQ(undo().trashed.size(), 1U);
    EXPECT_TRUE(world.isThere(own));
    EXPECT_EQ(labelOf(*library), "");
}

TEST_F(SharedSettings, AnOperationThatIsDamagedInTheSettingsCanStillBePutBackOnce) {
    for (const auto& damaged : {Defaults::Value(Defaults::Data{'{'}), Defaults::Value(std::string("none"))}) {
        const auto own = file("own");
        sweep({entry(own, SweepCategory::files, 1)}, "Own");
        world.defaults.set(DefaultsKeys::kLastOperation, damaged);
        library->appBecameActive();
        EXPECT_EQ(labelOf(*library), "Own");
        EXPECT_EQ(undo().trashed.size(), 1U);
        EXPECT_EQ(labelOf(*library), "");
        EXPECT_FALSE(world.defaults.isStored(DefaultsKeys::kLastOperation));
    }
}

// Uninstalls

TEST_F(SharedSettings, WhatEachDismissesIsForgottenAndWhatTheOtherRecordedStays) {
    store({record("alpha"), record("beta")});
    library = std::make_unique<AppLibrary>(world.platform);
    other = std::make_unique<AppLibrary>(world.platform);
    store({record("new"), record("alpha"), record("beta")}); // as another start does
    library->dismissRecentUninstall(record("alpha"));
    EXPECT_THAT(storedRecords(), ElementsAre(record("new"), record("beta")));
    EXPECT_THAT(*library->recentUninstalls, ElementsAre(record("new"), record("beta")));
    other->dismissRecentUninstall(record("beta"));
    EXPECT_THAT(storedRecords(), ElementsAre(record("new")));
}

TEST_F(SharedSettings, ARecordMayBeDismissedWhereItStands) {
    store({record("alpha"), record("beta")});
    library = std::make_unique<AppLibrary>(world.platform);
    store({record("beta"), record("alpha")});
    library->dismissRecentUninstall(library->recentUninstalls->front());
    EXPECT_THAT(storedRecords(), ElementsAre(record("beta")));
}

TEST_F(SharedSettings, RecordsThatAreLostFromTheSettingsAreStoredAgain) {
    store({record("alpha"), record("beta")});
    library = std::make_unique<AppLibrary>(world.platform);
    world.defaults.clear(DefaultsKeys::kRecentUninstalls);
    library->dismissRecentUninstall(record("alpha"));
    EXPECT_THAT(storedRecords(), ElementsAre(record("beta")));
}

TEST_F(SharedSettings, RecordsThatAreDamagedInTheSettingsStayKnownAndAreStoredAgain) {
    store({record("alpha"), record("beta")});
    library = std::make_unique<AppLibrary>(world.platform);
    for (const auto& damaged : {Defaults::Value(Defaults::Data{'['}), Defaults::Value(std::string("none"))}) {
        world.defaults.set(DefaultsKeys::kRecentUninstalls, damaged);
        library->appBecameActive();
        EXPECT_THAT(*library->recentUninstalls, ElementsAre(record("alpha"), record("beta")));
    }
    library->dismissRecentUninstall(record("alpha"));
    EXPECT_THAT(storedRecords(), ElementsAre(record("beta")));
}

} // namespace
} // namespace quillane
