#include "RemovalWorld.h"
#include "TaskScope.h"
#include "Uninstaller.h"
#include <gtest/gtest.h>

namespace quillane {
namespace {

using namespace std::chrono_literals;

struct UninstallerTest : testing::Test {
    FileURL home(const std::string& name) const { return FileURL("/Users/alex/" + name); }
    FileURL file(const std::string& name, const std::string& text = "x") {
        world.disk.file("Users/alex/" + name, text);
        return home(name);
    }
    Uninstaller::Report move(const std::vector<FileURL>& urls,
                             const std::unordered_map<FileURL, Bytes>& sizes = {}) {
        return Uninstaller::moveToTrash(world.platform, urls, sizes);
    }
    Uninstaller::Report putBack(const std::vector<TrashMove>& moves) {
        return Uninstaller::putBack(world.platform, moves);
    }
    RemovalWorld world;
};

TEST_F(UninstallerTest, EmptyListsGiveEmptyReportsAndTouchNothing) {
    EXPECT_EQ(move({}), Uninstaller::Report{});
    EXPECT_EQ(putBack({}), Uninstaller::Report{});
    EXPECT_EQ(world.trash.steps(), 0);
    EXPECT_TRUE(world.files.touched().empty());
}

TEST_F(UninstallerTest, AKnownSizeIsCreditedAndNothingIsMeasuredForIt) {
    const auto url = file("a");
    const auto report = move({url}, {{url, 123456}});
    EXPECT_EQ(report.reclaimedBytes, 123456);
    EXPECT_EQ(report.trashed, std::vector{url});
    EXPECT_TRUE(world.files.touched().empty());
}

TEST_F(UninstallerTest, AnUnknownSizeIsMeasuredBeforeTheMove) {
    world.disk.allocated("Users/alex/big", 65536);
    EXPECT_EQ(move({home("big")}).reclaimedBytes, 65536);
}

TEST_F(UninstallerTest, AMoveIsRecordedFromItsPlaceToWhereItLanded) {
    const auto url = file("a", "text");
    const auto report = move({url});
    ASSERT_EQ(report.moves.size(), 1U);
    EXPECT_EQ(report.moves[0].from, url);
    EXPECT_EQ(world.content(report.moves[0].to), "text");
    EXPECT_FALSE(world.isThere(url));
}

TEST_F(UninstallerTest, AMoveThatDoesNotSayWhereItLandedCountsAndCannotBePutBack) {
    const auto a = file("a");
    const auto b = file("b");
    world.trash.keepLandingOf(a);
    const auto report = move({a, b}, {{a, 10}, {b, 1}});
    EXPECT_EQ(report.trashed, (std::vector{a, b}));
    EXPECT_EQ(report.reclaimedBytes, 11);
    EXPECT_TRUE(report.failures.empty());
    ASSERT_EQ(report.moves.size(), 1U);
    EXPECT_EQ(report.moves[0].from, b);
}

TEST_F(UninstallerTest, AFailureNeverEndsTheWalk) {
    const auto a = file("a");
    const auto b = file("b");
    const auto c = file("c");
    world.trash.failStep(1, {ErrorCode::kWriteNoPermission, 13});
    const auto report = move({a, b, c}, {{a, 1}, {b, 10}, {c, 100}});
    EXPECT_EQ(report.trashed, (std::vector{a, c}));
    EXPECT_EQ(report.reclaimedBytes, 101);
    EXPECT_EQ(report.failures, (std::vector{Uninstaller::Failure{b, "No access", true}}));
    EXPECT_TRUE(world.isThere(b));
}

TEST_F(UninstallerTest, OneLocationTwiceMovesOnceAndItsSizeCountsOnce) {
    const auto a = file("a");
    const auto report = move({a, a}, {{a, 7}});
    EXPECT_EQ(report.reclaimedBytes, 7);
    EXPECT_EQ(report.failures, (std::vector{Uninstaller::Failure{a, "Failed", false}}));
}

struct ErrorCase {
    PlatformError error;
    bool isDenied;
};

TEST(UninstallerFailure, AccessFailuresAreToldByTheirCodesAlone) {
    for (const auto& [error, isDenied] : std::vector<ErrorCase>{{{513, {}}, true},
                                                                {{257, {}}, true},
                                                                {{512, 1}, true},
                                                                {{512, 18}, false},
                                                                {{256, 13}, true},
                                                                {{4, 2}, false},
                                                                {{640, 28}, false},
                                                                {{516, 17}, false},
                                                                {{3328, {}}, false},
                                                                {{1, {}}, false},
                                                                {{13, {}}, false},
                                                                {{512, 513}, false}}) {
        const auto failure = Uninstaller::Failure::fromError(FileURL("/a"), error);
        EXPECT_EQ(failure.isAccessDenied, isDenied) << error.code;
        EXPECT_EQ(failure.reason, isDenied ? "No access" : "Failed") << error.code;
        EXPECT_EQ(failure.url, FileURL("/a"));
    }
}

TEST_F(UninstallerTest, PutBackRestoresTheItemAndReclaimsNothing) {
    const auto url = file("a", "text");
    const auto moved = move({url});
    const auto back = putBack(moved.moves);
    EXPECT_EQ(back.trashed, std::vector{url});
    EXPECT_EQ(back.reclaimedBytes, 0);
    EXPECT_TRUE(back.moves.empty());
    EXPECT_TRUE(back.failures.empty());
    EXPECT_EQ(world.content(url), "text");
}

TEST_F(UninstallerTest, PutBackMakesTheFolderChainThatWasRemoved) {
    const auto url = file("one/two/a", "text");
    const auto moved = move({url});
    ASSERT_TRUE(move({home("one")}).failures.empty());
    ASSERT_FALSE(world.isThere(home("one")));
    EXPECT_EQ(putBack(moved.moves).trashed, std::vector{url});
    EXPECT_EQ(world.content(url), "text");
}

TEST_F(UninstallerTest, PutBackNeverOverwritesWhatIsThereNow) {
    const auto url = file("a", "old");
    const auto moved = move({url});
    file("a", "new");
    const auto back = putBack(moved.moves);
    EXPECT_EQ(back.failures, (std::vector{Uninstaller::Failure{
                                 url, "Something else now exists at the original location.", false}}));
    EXPECT_TRUE(back.trashed.empty());
    EXPECT_EQ(world.content(url), "new");
    EXPECT_EQ(world.content(moved.moves[0].to), "old");
}

TEST_F(UninstallerTest, AnItemGoneFromTheTrashIsToldSo) {
    const auto url = file("a");
    const auto moved = move({url});
    ASSERT_TRUE(world.realTrash.deleteItem(moved.moves[0].to).ok());
    const std::vector expected{Uninstaller::Failure{url, "No longer in the Trash.", false}};
    EXPECT_EQ(putBack(moved.moves).failures, expected);
    file("a"); // gone from the Trash comes first, also when something is at the original location
    EXPECT_EQ(putBack(moved.moves).failures, expected);
}

TEST_F(UninstallerTest, AnItemThatTookTheNameOfOursStaysInTheTrash) {
    const auto url = file("one/a", "text");
    const auto moved = move({url});
    ASSERT_TRUE(move({home("one")}).failures.empty());
    world.trash.answerOrigin(false);
    const std::vector expected{Uninstaller::Failure{url, "No longer in the Trash.", false}};
    EXPECT_EQ(putBack(moved.moves).failures, expected);
    EXPECT_TRUE(world.isThere(moved.moves[0].to));
    EXPECT_FALSE(world.isThere(home("one"))) << "nothing is made for it";
    file("one/a", "new"); // also when something is at the original location
    EXPECT_EQ(putBack(moved.moves).failures, expected);
}

TEST_F(UninstallerTest, AnItemBehindAFolderThatLiesInACloudAloneIsNotSaidToBeGone) {
    const auto url = file("a", "text");
    const auto moved = move({url});
    world.files.fail(moved.moves[0].to, {ErrorCode::kReadUnknown, EDEADLK});
    EXPECT_EQ(putBack(moved.moves).failures, (std::vector{Uninstaller::Failure{url, "Failed", false}}));
}

TEST_F(UninstallerTest, AnItemWhoseOriginCannotBeReadStaysInTheTrashAndIsAFailure) {
    const auto url = file("a", "text");
    const auto moved = move({url});
    world.trash.answerOrigin(PlatformError{ErrorCode::kReadNoPermission, 13});
    EXPECT_EQ(putBack(moved.moves).failures, (std::vector{Uninstaller::Failure{url, "No access", true}}));
    world.trash.answerOrigin(PlatformError{ErrorCode::kReadUnknown, 5});
    EXPECT_EQ(putBack(moved.moves).failures, (std::vector{Uninstaller::Failure{url, "Failed", false}}));
    EXPECT_TRUE(world.isThere(moved.moves[0].to));
    file("a", "new"); // what is in the way is told first
    EXPECT_EQ(putBack(moved.moves).failures,
              (std::vector{
                  Uninstaller::Failure{url, "Something else now exists at the original location.", false}}));
}

TEST_F(UninstallerTest, PutBackGoesOnAfterAFailure) {
    const auto a = file("a");
    const auto b = file("b");
    const auto moved = move({a, b});
    world.trash.failStep(2, {ErrorCode::kWriteNoPermission, 1});
    const auto back = putBack(moved.moves);
    EXPECT_EQ(back.trashed, std::vector{b});
    EXPECT_EQ(back.failures, (std::vector{Uninstaller::Failure{a, "No access", true}}));
}

TEST_F(UninstallerTest, AParentThatCannotBeMadeIsAFailureOfTheOriginalLocation) {
    const auto url = file("one/a");
    const auto moved = move({url});
    ASSERT_TRUE(move({home("one")}).failures.empty());
    world.files.fail(home("one"), {ErrorCode::kWriteNoPermission, 13});
    EXPECT_EQ(putBack(moved.moves).failures, (std::vector{Uninstaller::Failure{url, "No access", true}}));
    EXPECT_TRUE(world.isThere(moved.moves[0].to));
}

TEST_F(UninstallerTest, ADanglingLinkGoesAndComesBackAsItIs) {
    world.disk.link("Users/alex/link", "nowhere");
    const auto moved = move({home("link")});
    ASSERT_EQ(moved.moves.size(), 1U);
    EXPECT_EQ(putBack(moved.moves).trashed, std::vector{home("link")});
    EXPECT_EQ(world.realFiles.resourceValues(home("link")).value().type, EntryType::symbolicLink);
}

struct QuitTest : UninstallerTest {
    // Starts to quit; the answer comes when the clock has been moved far enough.
    void quit(std::optional<std::string> identifier) {
        scope.start([this, identifier](StopToken) -> Task<> {
            answer = co_await Uninstaller::quitIfRunning(world.platform, identifier);
        });
        world.runner.settle();
    }
    std::optional<bool> answer;
    TaskScope scope{world.runner};
};

TEST_F(QuitTest, WithoutAnIdentifierThereIsNothingToWaitFor) {
    quit(std::nullopt);
    EXPECT_EQ(answer, true);
    EXPECT_EQ(world.clock.sleepers(), 0U);
}

TEST_F(QuitTest, WhatDoesNotRunIsNotAskedAndNotWaitedFor) {
    quit("com.example.tool");
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(world.running.asked.empty());
}

TEST_F(QuitTest, AnApplicationThatQuitsAtOnceStillCostsOneLook) {
    world.running.start("com.example.tool");
    quit("com.example.tool");
    EXPECT_EQ(answer, std::nullopt);
    world.clock.advance(99ms);
    EXPECT_EQ(answer, std::nullopt);
    world.clock.advance(1ms);
    EXPECT_EQ(answer, true);
    EXPECT_EQ(world.running.asked, std::vector<std::string>{"com.example.tool"});
}

TEST_F(QuitTest, AStubbornApplicationIsAskedOnceAndGivenThreeSeconds) {
    world.running.start("com.example.tool", true);
    quit("com.example.tool");
    world.clock.advance(2999ms);
    EXPECT_EQ(answer, std::nullopt);
    world.clock.advance(1ms);
    EXPECT_EQ(answer, false);
    EXPECT_EQ(world.running.asked.size(), 1U);
}

TEST_F(QuitTest, AnApplicationThatQuitsInTheEndIsNoticedAtTheNextLook) {
    world.running.start("com.example.tool", true);
    quit("com.example.tool");
    world.clock.advance(2950ms);
    world.running.stop("com.example.tool");
    world.clock.advance(50ms);
    EXPECT_EQ(answer, true);
}

TEST(UninstallerReport, ASummaryTellsWhatWasHandledAndWhatFailed) {
    Uninstaller::Report report;
    EXPECT_EQ(report.summary("Restored", "to their original locations"),
              "Restored 0 item(s) to their original locations, reclaiming Zero KB.");
    report.trashed = {FileURL("/a"), FileURL("/b")};
    report.reclaimedBytes = 1500000;
    report.failures = {{FileURL("/c"), "No access", true}, {FileURL("/d"), "Failed", false}};
    EXPECT_EQ(report.summary("Moved", "to the Trash"),
              "Moved 2 item(s) to the Trash, reclaiming 1.5 MB.\n\n2 item(s) failed.");
    report.failures.pop_back();
    EXPECT_EQ(
        report.summary("Moved", "to the Trash"),
        "Moved 2 item(s) to the Trash, reclaiming 1.5 MB.\n\n1 item(s) failed: macOS blocked access. Grant "
        "Full Disk Access to include them.");
}

TEST(UninstallerReport, TheNumbersOfASummaryAreGrouped) {
    Uninstaller::Report report;
    report.trashed.assign(1234, FileURL("/a"));
    report.failures.assign(5678, {FileURL("/c"), "Failed", false});
    EXPECT_EQ(report.summary("Moved", "to the Trash"),
              "Moved 1,234 item(s) to the Trash, reclaiming Zero KB.\n\n5,678 item(s) failed.");
}

TEST(UninstallerReport, ASummaryOfNothingButFailuresStillHasItsFirstLine) {
    const Uninstaller::Report report{{}, {}, {{FileURL("/c"), "Failed", false}}, 0};
    EXPECT_EQ(report.summary("Restored", "to their original locations"),
              "Restored 0 item(s) to their original locations, reclaiming Zero KB.\n\n1 item(s) failed.");
}

} // namespace
} // namespace quillane
