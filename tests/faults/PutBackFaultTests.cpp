// Every call that a put back makes of the system fails in turn, with each error. What does not come back stays
// in the Trash with its record and is told; the operation is forgotten; nothing is overwritten or lost.
#include "FailingCall.h"
#include "ToldPlaces.h"
#include <fstream>
#include <gtest/gtest.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

template <class Adapters>
struct PutBackFaults : testing::Test {
    // A folder, a link, and a file whose folder is gone by the time of the put back.
    struct Ground : RealHome {
        Ground() {
            Launch<Adapters>(*this).sweep(entriesFor<Adapters>(*this, items()), "Sweep");
            fs::remove_all(path("Documents/deep"));
        }
        static std::vector<std::string> items() {
            return {"Library/Caches/com.example.a", "Downloads/link", kDeep};
        }
    };

    static bool isInTrash(const Ground& ground, const std::string& item) {
        const auto places = placesOf<Adapters>(ground, item);
        return places.size() == 1 && places[0] != ground.path(item);
    }
    // The calls of the job alone; what is stored and the scan come after it.
    static int callsOfJob() {
        const Ground ground;
        Launch<Adapters> launch(ground);
        launch.startUndo();
        const FailingCall none;
        launch.runner.runJob();
        return none.count();
    }
    static void expectTrue(const Uninstaller::Report& report, const Ground& ground) {
        expectTold<Adapters>(ground, Ground::items(), {report.trashed.begin(), report.trashed.end()},
                             urlsOf(report.failures));
    }
    static bool isOfRecord(const std::string& path) { return path == "info" || path.ends_with(".trashinfo"); }
    static void expectForgotten(const Launch<Adapters>& launch, const Ground& ground) {
        EXPECT_FALSE(launch.library.lastOperation->has_value());
        EXPECT_EQ(launch.library.phase->kind, AppLibrary::Phase::Kind::ready); // the lists were made anew
        EXPECT_FALSE(Launch<Adapters>(ground).library.lastOperation->has_value());
    }
};

using Kinds = testing::Types<PlainAdapters, DesktopAdapters>;
TYPED_TEST_SUITE(PutBackFaults, Kinds);

// The look whether an item is in the Trash, or its place free, answers "no" when it fails, as the platform's
// does: the first ends the attempt, the second is made good by a move that overwrites nothing.
TYPED_TEST(PutBackFaults, EachCallThatFailsLeavesAtMostItsOwnItemInTheTrashAndSaysSo) {
    using Ground = typename TestFixture::Ground;
    const int calls = TestFixture::callsOfJob();
    ASSERT_GT(calls, 15);
    std::set<std::string> harmful; // the calls whose failure left an item behind
    for (const int error : kErrors) {
        for (int failing = 0; failing < calls; ++failing) {
            const Ground ground;
            Launch<TypeParam> launch(ground);
            launch.startUndo();
            std::string what;
            std::string call;
            std::string failedPath;
            bool inTrash = false;
            {
                const FailingCall fault(failing, error);
                launch.runner.runJob();
                what = fault.describe(error);
                call = fault.name;
                failedPath = fault.path;
                inTrash =
                    fault.path.find("Trash/") != std::string::npos || TestFixture::isOfRecord(fault.path);
            }
            launch.runner.runAll();
            SCOPED_TRACE(what);
            const auto report = launch.undone.value();
            this->expectTrue(report, ground);
            this->expectForgotten(launch, ground);
            ASSERT_LE(report.failures.size(), 1U);
            for (const auto& failure : report.failures) {
                harmful.insert(call);
                const bool lookedInTrash = failure.reason == "No longer in the Trash.";
                EXPECT_TRUE(!lookedInTrash || inTrash);
                EXPECT_EQ(failure.isAccessDenied, !lookedInTrash && isRefusal(error));
                EXPECT_TRUE(lookedInTrash || failure.reason == (isRefusal(error) ? "No access" : "Failed"))
                    << failure.reason;
            }
            EXPECT_TRUE(call != "renameat2" || report.failures.size() == 1);
            if (TypeParam::
                    kHasRecords) { // the record of what came back may stay only when it can't be removed
                const auto stray = recordsWithoutItem(TypeParam::trashFolder(ground));
                EXPECT_EQ(stray.size(),
                          TestFixture::isOfRecord(failedPath) && report.failures.empty() ? 1U : 0U);
            }
            if (this->HasFailure()) {
                return;
            }
        }
    }
    EXPECT_TRUE(harmful.contains("renameat2"));
    EXPECT_TRUE(harmful.contains("mkdirat"));
    EXPECT_FALSE(harmful.contains("unlinkat")); // the item is back all the same
}

TYPED_TEST(PutBackFaults, WhenEveryMoveFailsEverythingStaysInTheTrashWithItsRecord) {
    using Ground = typename TestFixture::Ground;
    for (const int error : kErrors) {
        SCOPED_TRACE(error);
        const Ground ground;
        Launch<TypeParam> launch(ground);
        launch.startUndo();
        {
            const SystemCallWatch watch(
                [error](const SystemCall& call) { return call.name == "renameat2" ? error : 0; });
            launch.runner.runJob();
        }
        launch.runner.runAll();
        this->expectTrue(launch.undone.value(), ground);
        this->expectForgotten(launch, ground);
        EXPECT_EQ(launch.undone->failures.size(), Ground::items().size());
    }
}

// Something new stands where each item lived.
TYPED_TEST(PutBackFaults, WhateverFailsNothingNewIsOverwritten) {
    using Ground = typename TestFixture::Ground;
    const int calls = TestFixture::callsOfJob();
    for (const int error : {ENOENT, EACCES, EIO}) {
        for (int failing = 0; failing < calls; ++failing) {
            const Ground ground;
            for (const auto& item : Ground::items()) {
                fs::create_directories(ground.path(item).parent_path());
                std::ofstream(ground.path(item)) << "new";
            }
            Launch<TypeParam> launch(ground);
            launch.startUndo();
            std::string what;
            {
                const FailingCall fault(failing, error);
                launch.runner.runJob();
                what = fault.describe(error);
            }
            launch.runner.runAll();
            SCOPED_TRACE(what);
            this->expectForgotten(launch, ground);
            EXPECT_TRUE(launch.undone->trashed.empty());
            EXPECT_EQ(launch.undone->failures.size(), Ground::items().size());
            for (const auto& item : Ground::items()) {
                EXPECT_EQ(everythingAt(ground.path(item)), "new");
                EXPECT_TRUE(TestFixture::isInTrash(ground, item)) << item;
            }
            if (this->HasFailure()) {
                return;
            }
        }
    }
}

// The Trash was emptied, and something else of that name went there.
TEST(PutBack, AnotherItemOfTheNameOfOursStaysInTheTrash) {
    const RealHome home;
    const std::string item = "Library/Caches/com.example.a";
    Launch<DesktopAdapters> launch(home);
    launch.sweep(entriesFor<DesktopAdapters>(home, {item}), "Sweep");
    auto& trash = launch.ports.adapters.trash;
    const auto ours = trash.items()->front();
    ASSERT_TRUE(trash.deleteItem(ours).ok());
    fs::create_directories(home.path("Documents/com.example.a"));
    const auto another = trash.moveToTrash(DesktopAdapters::url(home, "Documents/com.example.a"));
    ASSERT_EQ(another.value(), ours);
    const auto undone = launch.undo();
    ASSERT_EQ(undone.failures.size(), 1U);
    EXPECT_EQ(undone.failures[0].reason, "No longer in the Trash.");
    EXPECT_EQ(undone.failures[0].url, DesktopAdapters::url(home, item));
    EXPECT_TRUE(fs::exists(ours.path()));
    EXPECT_FALSE(fs::exists(home.path(item)));
}

} // namespace
} // namespace quillane
