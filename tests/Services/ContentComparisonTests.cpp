#include "ComparisonTest.h"
#include "ThreadTaskRunner.h"
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

constexpr auto kLetter = static_cast<Bytes>(MadeUpFile::kLetter);
constexpr auto kPortion = static_cast<Bytes>(SteppedComparison::kPortion);
constexpr auto kMostOpen = SteppedComparison::kMostOpen;
constexpr int kStepsOfALetter = MadeUpFile::kLetter / SteppedComparison::kStep;
// Of two portions and a half, the same at both ends.
const std::string kLong = "abbbbbbbbbbbbbbbbbba";

MadeUpFile failingAt(const std::string& letters, Bytes byte) {
    MadeUpFile file{letters};
    file.badByte = byte;
    return file;
}

std::string withLetter(std::string letters, std::size_t at, char letter) {
    letters.at(at) = letter;
    return letters;
}

TEST(ContentComparison, EqualFilesAreFoundWithTheirDigest) {
    ComparisonWorld world({{kLong}, {kLong}, {kLong}});
    const auto groups = world.compared();
    ASSERT_EQ(groups.size(), 1U);
    EXPECT_EQ(groups, world.expected());
    EXPECT_THAT(world.names(), ElementsAre(Names{"0", "1", "2"}));
}

TEST(ContentComparison, AnotherMiddleTellsFilesApartWhereverItLies) {
    for (std::size_t step = 1; step + 1 < kLong.size(); ++step) {
        ComparisonWorld world({{kLong}, {withLetter(kLong, step, 'x')}});
        EXPECT_THAT(world.names(), IsEmpty()) << step;
    }
}

TEST(ContentComparison, ClassesThatSplitGoOnByThemselves) {
    const auto early = withLetter(kLong, 3, 'x');
    const auto late = withLetter(kLong, 12, 'x');
    const auto both = withLetter(early, 12, 'x');
    ComparisonWorld world({{kLong}, {early}, {late}, {both}, {late}, {both}, {early}, {kLong}, {"abba"}});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_EQ(world.compared().size(), 4U);
}

TEST(ContentComparison, FilesOfUnequalLengthDiffer) {
    MadeUpFile longer{kLong};
    longer.tail = 1;
    ComparisonWorld world({{kLong}, longer, {kLong + "a"}, {kLong}});
    EXPECT_THAT(world.names(), ElementsAre(Names{"0", "3"}));
}

TEST(ContentComparison, AFileWithoutBytesEqualsAnother) {
    ComparisonWorld world({{""}, {kLong}, {""}});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), ElementsAre(Names{"0", "2"}));
}

TEST(ContentComparison, WhatCannotBeOpenedOrClosedIsLeftOutAndTheOthersStayAGroup) {
    MadeUpFile locked{kLong};
    locked.opens = false;
    MadeUpFile stuck{kLong};
    stuck.closes = false;
    ComparisonWorld world({locked, {kLong}, stuck, {kLong}});
    EXPECT_THAT(world.names(), ElementsAre(Names{"1", "3"}));
    ComparisonWorld lone({locked, {kLong}, stuck});
    EXPECT_THAT(lone.names(), IsEmpty());
}

TEST(ContentComparison, AFileWhoseBeginningCannotBeReadIsLeftOut) {
    ComparisonWorld world({failingAt(kLong, 0), failingAt(kLong, 0), {kLong}, {kLong}});
    EXPECT_THAT(world.names(), ElementsAre(Names{"2", "3"}));
}

TEST(ContentComparison, AFileWhoseEndCannotBeReadIsKnownByItsBeginning) {
    const auto end = static_cast<Bytes>(kLong.size()) * kLetter - 1;
    ComparisonWorld world({failingAt(kLong, end), {kLong}, failingAt(kLong, end), {kLong}});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), testing::UnorderedElementsAre(Names{"0", "2"}, Names{"1", "3"}));
}

TEST(ContentComparison, AFileWhoseLengthCannotBeToldIsKnownByItsBeginning) {
    MadeUpFile untold{kLong};
    untold.tellsItsLength = false;
    ComparisonWorld world({untold, {kLong}, untold, {kLong}});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), testing::UnorderedElementsAre(Names{"0", "2"}, Names{"1", "3"}));
}

TEST(ContentComparison, FilesThatFailInTheSamePortionEqualEachOtherAndNoOther) {
    ComparisonWorld world({{kLong},
                           failingAt(kLong, kPortion + 5),
                           failingAt(withLetter(kLong, 9, 'x'), kPortion + 3 * kLetter),
                           {kLong},
                           failingAt(kLong, kPortion - 5)});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), testing::UnorderedElementsAre(Names{"0", "3"}, Names{"1", "2"}));
}

TEST(ContentComparison, AFileThatEndsAtAPortionEqualsWhatFailsInTheNext) {
    const std::string portion(8, 'a');
    const auto longer = portion + "aaa";
    for (const auto& made : {std::vector<MadeUpFile>{{portion}, failingAt(longer, kPortion + 2 * kLetter)},
                             std::vector<MadeUpFile>{failingAt(longer, kPortion + 2 * kLetter), {portion}}}) {
        ComparisonWorld world(made);
        EXPECT_EQ(world.compared(), world.expected());
        EXPECT_THAT(world.names(), ElementsAre(Names{"0", "1"}));
    }
}

TEST(ContentComparison, FilesThatDifferRightBehindAPortionAndThenFailAreEqual) {
    const auto other = withLetter(kLong, 8, 'x');
    ComparisonWorld world(
        {failingAt(kLong, kPortion + 3 * kLetter), failingAt(other, kPortion + 2 * kLetter)});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), ElementsAre(Names{"0", "1"}));
}

// One fault in every step of every file, of copies and near copies.
TEST(ContentComparison, AFaultAtAnyReadLeavesTheAnswerOfPlainHashing) {
    const std::vector<MadeUpFile> tree = {{kLong}, {kLong}, {kLong}, {withLetter(kLong, 10, 'x')}};
    for (std::size_t file = 0; file < tree.size(); ++file) {
        for (Bytes byte = 0; byte < tree[file].length(); byte += kLetter) {
            auto faulty = tree;
            faulty[file].badByte = byte + 1;
            ComparisonWorld world(faulty);
            world.ahead = file % 2 == 0 ? kPortion : SteppedComparison::kAhead;
            EXPECT_EQ(world.compared(), world.expected()) << "file " << file << ", byte " << byte;
        }
    }
}

TEST(ContentComparison, TwoFaultsAtAnyReadsLeaveTheAnswerOfPlainHashing) {
    const std::vector<MadeUpFile> tree = {{kLong}, {withLetter(kLong, 10, 'x')}, {kLong}};
    for (Bytes one = kLetter; one < tree[0].length(); one += kLetter) {
        for (const auto distance : {-8 * kLetter, -kLetter, Bytes{0}, kLetter, 3 * kLetter, 8 * kLetter}) {
            auto faulty = tree;
            faulty[0].badByte = one;
            faulty[1].badByte = std::max<Bytes>(one + distance, 0);
            ComparisonWorld world(faulty);
            EXPECT_EQ(world.compared(), world.expected()) << "bytes " << one << ", " << distance;
        }
    }
}

TEST(ContentComparison, AFileThatFailedIsNotReadAgain) {
    ComparisonWorld world({failingAt("abba", 2 * kLetter), {"abba"}, {"abba"}});
    static_cast<void>(world.compared());
    // Both ends of each; the first half and one step more of the one that fails.
    const int ofFailed = 2 + 2 * kStepsOfALetter + 1;
    // All of the others and what is behind their ends, once more the content of one, and the end of each.
    const int ofOthers = 2 * (2 + 4 * kStepsOfALetter + 1) + 4 * kStepsOfALetter + 2;
    EXPECT_EQ(world.files.reads(), ofFailed + ofOthers);
}

TEST(ContentComparison, AShortStepIsTheLast) {
    MadeUpFile file{"abba"};
    file.tail = 1;
    ComparisonWorld world({file, file});
    EXPECT_EQ(world.names().size(), 1U);
    const int steps = 4 * kStepsOfALetter + 1;
    EXPECT_EQ(world.files.reads(), 2 * (2 + steps) + steps + 2);
}

TEST(ContentComparison, WhatHasNoFellowIsNotReadBehindItsPortionAndNotHashed) {
    ComparisonWorld world({{kLong}, {withLetter(kLong, 2, 'x')}});
    static_cast<void>(world.compared());
    // One portion each; the second reads the step in which it differs once more.
    EXPECT_EQ(world.files.reads(), 2 * (2 + 8 * kStepsOfALetter) + 1);
}

TEST(ContentComparison, HashingFollowsBeforeComparingIsFarAhead) {
    ComparisonWorld world({{kLong + kLong + "a"}, {kLong + kLong + "a"}});
    world.ahead = kPortion;
    Bytes compared = 0;
    Bytes hashed = 0;
    Bytes farthest = 0;
    world.files.beforeEachRead([&](Bytes offset) {
        if (world.files.reads() <= 2 * 2) {
            return; // of the ends
        }
        (offset < compared ? hashed : compared) = offset;
        farthest = std::max(farthest, compared - hashed);
    });
    EXPECT_EQ(world.names().size(), 1U);
    EXPECT_GT(hashed, 5 * kPortion);
    EXPECT_GE(farthest, kPortion);
    EXPECT_LE(farthest, kPortion + kLetter);
}

TEST(ContentComparison, WhatIsLostBeforeItIsHashedIsLeftOutAndTheOthersStayAGroup) {
    MadeUpFile lost{kLong};
    lost.isLostOnceRead = true;
    for (const Bytes ahead : {Bytes{0}, kPortion, SteppedComparison::kAhead}) {
        ComparisonWorld world({lost, {kLong}, {kLong}});
        world.ahead = ahead;
        EXPECT_THAT(world.names(), ElementsAre(Names{"1", "2"}));
        EXPECT_EQ(world.compared().front().first,
                  ComparisonWorld({{kLong}, {kLong}}).expected().front().first);
        ComparisonWorld pair({lost, {kLong}});
        pair.ahead = ahead;
        EXPECT_THAT(pair.names(), IsEmpty());
        ComparisonWorld all({lost, lost, lost});
        all.ahead = ahead;
        EXPECT_THAT(all.names(), IsEmpty());
    }
}

TEST(ContentComparison, MoreFilesThanAreComparedAtOnceAreToldApartAsWell) {
    std::vector<MadeUpFile> many(3 * kMostOpen + 6, {"abbbbbbbbba"});
    many[3] = {"abbbxbbbbba"};
    many[40] = many[3];
    for (auto& file : many) {
        file.tail = 100;
    }
    many[50] = failingAt("abbbbbbbbba", kPortion + kLetter);
    many[51] = {"abbbbbbbxxa"};
    many[52] = failingAt("abbbbbbbxba", kPortion + 2 * kLetter);
    ComparisonWorld world(many);
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_EQ(world.compared().size(), 3U);
}

TEST(ContentComparison, OfOneFileMoreThanAreComparedAtOnceTheLastIsFoundAsWell) {
    ComparisonWorld world(std::vector<MadeUpFile>(kMostOpen + 1, {kLong}));
    EXPECT_EQ(world.compared(), world.expected());
}

TEST(ContentComparison, HoweverManyAreEqualFewAreOpenAtATime) {
    constexpr auto kMost = kMostOpen * SteppedComparison::kLanes;
    ComparisonWorld world(std::vector<MadeUpFile>(3 * kMost, {kLong}));
    EXPECT_EQ(world.compared().size(), 1U);
    EXPECT_EQ(world.files.mostOpen(), static_cast<int>(kMost));
}

TEST(ContentComparison, FilesOfMoreSizesThanAreLookedAtTogetherComeInTheirOrder) {
    ComparisonWorld world({});
    std::vector<Names> pairs;
    for (Bytes size = 1; size <= 3; ++size) {
        for (Bytes length = 1; length <= static_cast<Bytes>(ContentComparison::kBatch) / 2; ++length) {
            world.lay(size, std::to_string(size) + "-" + std::to_string(length), {"", length});
        }
        pairs.push_back({std::to_string(size) + "-7", std::to_string(size) + " copy"});
        world.lay(size, pairs.back()[1], {"", 7});
    }
    EXPECT_EQ(world.names(), pairs);
}

TEST(ContentComparison, WhatDiffersAtItsEndOrItsBeginningIsNotReadWhole) {
    ComparisonWorld world({{kLong}, {withLetter(kLong, kLong.size() - 1, 'x')}, {withLetter(kLong, 0, 'x')}});
    EXPECT_THAT(world.names(), IsEmpty());
    EXPECT_EQ(world.files.reads(), 3 * 2) << "both ends of each";
}

TEST(ContentComparison, AStopEndsTheReadingAtOnceAndFindsNothing) {
    for (const int reads : {1, 5, 9, 20, 30}) {
        ComparisonWorld world({{kLong}, {kLong}, {withLetter(kLong, 4, 'x')}});
        const StopSource stop;
        world.files.beforeEachRead([&](Bytes /*offset*/) {
            if (world.files.reads() == reads) {
                stop.requestStop();
            }
        });
        EXPECT_THAT(world.compared(stop.token()), IsEmpty());
        EXPECT_LE(world.files.reads(), reads + 3) << "but for the step of the class"; // and its ends
    }
}

TEST(ContentComparison, AStopEndsTheReadingOfManyFilesToo) {
    constexpr int kFiles = static_cast<int>(kMostOpen) + 1;
    ComparisonWorld world(std::vector<MadeUpFile>(kFiles, {kLong}));
    const StopSource stop;
    const int reads = 2 * kFiles + 5; // of all ends and of the first whole file
    world.files.beforeEachRead([&](Bytes /*offset*/) {
        if (world.files.reads() == reads) {
            stop.requestStop();
        }
    });
    EXPECT_THAT(world.compared(stop.token()), IsEmpty());
    EXPECT_LE(world.files.reads(), reads + static_cast<int>(kMostOpen)) << "but for the step of the class";
}

TEST(ContentComparison, AStopTakesBackWhatWasFoundBefore) {
    ComparisonWorld world({{kLong}, {kLong}, {"cc"}, {"cc"}});
    const StopSource stop;
    // All has been compared; of what is hashed side by side the short one has ended, and both its files were asked
    // whether they have grown.
    const auto stepsOf = [](std::size_t letters) { return static_cast<int>(letters) * kStepsOfALetter; };
    const int found = 4 * 2 + 2 * (stepsOf(kLong.size()) + 1) + 2 * (stepsOf(2) + 1) + 2 * stepsOf(2) + 2;
    world.files.beforeEachRead([&](Bytes /*offset*/) {
        if (world.files.reads() == found + 1) {
            stop.requestStop();
        }
    });
    EXPECT_THAT(world.compared(stop.token()), IsEmpty());
    EXPECT_TRUE(stop.stopRequested());
}

TEST(ContentComparison, SeveralThreadsFindTheSame) {
    std::vector<MadeUpFile> made;
    for (std::size_t i = 0; i < 40; ++i) {
        made.push_back({withLetter(withLetter(kLong, 1 + i % 3, 'x'), 9 + i % 5, 'y')});
    }
    ComparisonWorld world(made);
    MainQueue mainQueue;
    ThreadTaskRunner threads(mainQueue);
    EXPECT_EQ(world.compared(threads), world.expected());
}

} // namespace
} // namespace quillane
