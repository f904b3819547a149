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

constexpr auto kStep = static_cast<Bytes>(ContentComparison::kStep);
constexpr auto kPortion = static_cast<Bytes>(ContentComparison::kPortion);
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
    const auto end = static_cast<Bytes>(kLong.size()) * kStep - 1;
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
                           failingAt(withLetter(kLong, 9, 'x'), kPortion + 3 * kStep),
                           {kLong},
                           failingAt(kLong, kPortion - 5)});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), testing::UnorderedElementsAre(Names{"0", "3"}, Names{"1", "2"}));
}

TEST(ContentComparison, AFileThatEndsAtAPortionEqualsWhatFailsInTheNext) {
    const std::string portion(8, 'a');
    const auto longer = portion + "aaa";
    for (const auto& made : {std::vector<MadeUpFile>{{portion}, failingAt(longer, kPortion + 2 * kStep)},
                             std::vector<MadeUpFile>{failingAt(longer, kPortion + 2 * kStep), {portion}}}) {
        ComparisonWorld world(made);
        EXPECT_EQ(world.compared(), world.expected());
        EXPECT_THAT(world.names(), ElementsAre(Names{"0", "1"}));
    }
}

TEST(ContentComparison, FilesThatDifferRightBehindAPortionAndThenFailAreEqual) {
    const auto other = withLetter(kLong, 8, 'x');
    ComparisonWorld world({failingAt(kLong, kPortion + 3 * kStep), failingAt(other, kPortion + 2 * kStep)});
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_THAT(world.names(), ElementsAre(Names{"0", "1"}));
}

// One fault in every step of every file, of copies and near copies.
TEST(ContentComparison, AFaultAtAnyReadLeavesTheAnswerOfPlainHashing) {
    const std::vector<MadeUpFile> tree = {{kLong}, {kLong}, {kLong}, {withLetter(kLong, 10, 'x')}};
    for (std::size_t file = 0; file < tree.size(); ++file) {
        for (Bytes byte = 0; byte < tree[file].length(); byte += kStep) {
            auto faulty = tree;
            faulty[file].badByte = byte + 1;
            ComparisonWorld world(faulty);
            EXPECT_EQ(world.compared(), world.expected()) << "file " << file << ", byte " << byte;
        }
    }
}

TEST(ContentComparison, TwoFaultsAtAnyReadsLeaveTheAnswerOfPlainHashing) {
    const std::vector<MadeUpFile> tree = {{kLong}, {withLetter(kLong, 10, 'x')}, {kLong}};
    for (Bytes one = kStep; one < tree[0].length(); one += kStep) {
        for (const auto distance : {-8 * kStep, -kStep, Bytes{0}, kStep, 3 * kStep, 8 * kStep}) {
            auto faulty = tree;
            faulty[0].badByte = one;
            faulty[1].badByte = std::max<Bytes>(one + distance, 0);
            ComparisonWorld world(faulty);
            EXPECT_EQ(world.compared(), world.expected()) << "bytes " << one << ", " << distance;
        }
    }
}

TEST(ContentComparison, AFileThatFailedIsNotReadAgain) {
    ComparisonWorld world({failingAt("abba", 2 * kStep), {"abba"}, {"abba"}});
    static_cast<void>(world.compared());
    // Two of the ends of each; three steps of the one that fails, four and the end of the others.
    EXPECT_EQ(world.files.reads(), 3 * 2 + 3 + 2 * 5);
}

TEST(ContentComparison, AShortStepIsTheLast) {
    MadeUpFile file{"abba"};
    file.tail = 1;
    ComparisonWorld world({file, file});
    EXPECT_EQ(world.names().size(), 1U);
    EXPECT_EQ(world.files.reads(), 2 * 2 + 2 * 5);
}

TEST(ContentComparison, WhatHasNoFellowIsNotReadBehindItsPortion) {
    ComparisonWorld world({{kLong}, {withLetter(kLong, 2, 'x')}});
    static_cast<void>(world.compared());
    // One portion of eight steps each; the second reads the step in which it differs once more.
    EXPECT_EQ(world.files.reads(), 2 * 2 + 8 + 9);
}

TEST(ContentComparison, MoreFilesThanAreOpenAtOnceAreToldApartAsWell) {
    std::vector<MadeUpFile> many(ContentComparison::kMostInStep + 6, {"abbbbbbbbba"});
    many[3] = {"abbbxbbbbba"};
    many[40] = many[3];
    for (auto& file : many) {
        file.tail = 100;
    }
    many[50] = failingAt("abbbbbbbbba", kPortion + kStep);
    many[51] = {"abbbbbbbxxa"};
    many[52] = failingAt("abbbbbbbxba", kPortion + 2 * kStep);
    ComparisonWorld world(many);
    EXPECT_EQ(world.compared(), world.expected());
    EXPECT_EQ(world.compared().size(), 3U);
}

TEST(ContentComparison, OfMoreFilesThanMayBeOpenAtOnceOneIsOpenAtATime) {
    const std::vector<MadeUpFile> most(ContentComparison::kMostInStep, {kLong});
    ComparisonWorld inStep(most);
    EXPECT_EQ(inStep.compared().size(), 1U);
    EXPECT_EQ(inStep.files.mostOpen(), static_cast<int>(ContentComparison::kMostInStep));
    auto more = most;
    more.push_back({kLong});
    ComparisonWorld byThemselves(more);
    EXPECT_EQ(byThemselves.compared().size(), 1U);
    EXPECT_EQ(byThemselves.files.mostOpen(), 1);
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
        world.files.beforeEachRead([&] {
            if (world.files.reads() == reads) {
                stop.requestStop();
            }
        });
        EXPECT_THAT(world.compared(stop.token()), IsEmpty());
        EXPECT_LE(world.files.reads(), reads + 3) << "but for the step of the class"; // and its ends
    }
}

TEST(ContentComparison, AStopEndsTheReadingOfManyFilesToo) {
    constexpr int kFiles = static_cast<int>(ContentComparison::kMostInStep) + 1;
    ComparisonWorld world(std::vector<MadeUpFile>(kFiles, {kLong}));
    const StopSource stop;
    const int reads = 2 * kFiles + 5; // of all ends and of the first whole file
    world.files.beforeEachRead([&] {
        if (world.files.reads() == reads) {
            stop.requestStop();
        }
    });
    EXPECT_THAT(world.compared(stop.token()), IsEmpty());
    EXPECT_EQ(world.files.reads(), reads);
}

TEST(ContentComparison, AStopTakesBackWhatWasFoundBefore) {
    const auto others = withLetter(withLetter(kLong, 0, 'c'), kLong.size() - 1, 'c');
    ComparisonWorld world({{kLong}, {kLong}, {others}, {others}});
    const StopSource stop;
    // All ends and the whole of one pair have been read.
    world.files.beforeEachRead([&, whole = 4 * 2 + 2 * static_cast<int>(kLong.size() + 1)] {
        if (world.files.reads() == whole + 5) {
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
