#include "FakeMetadata.h"
#include "FakeWorkspace.h"
#include "FaultFileSystem.h"
#include "FootprintCalculator.h"
#include "ManualClock.h"
#include "OrdinaryUser.h"
#include "PosixFileSystem.h"
#include "RecordingFileSystem.h"
#include "RemovalFakes.h"
#include "ScriptedCommandRunner.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <array>
#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <thread>

namespace quillane {
namespace {

// A file system whose only content is a table of sizes.
class TableFileSystem final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    ResourceValues root;
    std::vector<WalkEntry> entries;

    Result<ResourceValues> resourceValues(const FileURL&) const override { return root; }
    Result<> walk(const FileURL&, WalkOptions, Visitor visit) const override {
        for (const auto& entry : entries) {
            if (visit(entry) == WalkAnswer::stop) {
                break;
            }
        }
        return success();
    }
};

class FootprintCalculatorTest : public testing::Test {
  protected:
    Bytes sizeOf(FileSystem& files, const std::string& path, const StopToken& stop = {}) {
        StepTaskRunner runner;
        ManualClock clock{runner};
        RemovalFakes fakes;
        const Platform platform{files,       m_commands,  m_metadata,    clock,         runner,
                                m_workspace, fakes.trash, fakes.running, fakes.defaults};
        return FootprintCalculator::size(platform, FileURL(path), stop);
    }
    Bytes sizeOf(const std::string& path, const StopToken& stop = {}) { return sizeOf(disk, path, stop); }

    TemporaryFolder folder;
    PosixFileSystem disk{folder.path(), FileURL("/Users/alex")};
    FaultFileSystem faulty{disk};
    RecordingFileSystem recorded{disk};

  private:
    ScriptedCommandRunner m_commands;
    FakeMetadata m_metadata;
    FakeWorkspace m_workspace;
};

const std::string kSome(5'000, 'x');
const std::string kMore(70'000, 'x');

TEST_F(FootprintCalculatorTest, AMissingPathMeasuresZero) {
    EXPECT_EQ(sizeOf("/missing"), 0);
    EXPECT_EQ(sizeOf("/missing/below"), 0);
}

TEST_F(FootprintCalculatorTest, ARegularFileMeasuresItsAllocatedSize) {
    folder.file("file", kSome);
    EXPECT_EQ(sizeOf("/file"), folder.allocationOf("file"));
    EXPECT_GE(sizeOf("/file"), 5'000);
}

TEST_F(FootprintCalculatorTest, AnEmptyFileAndAnEmptyFolderMeasureZero) {
    folder.file("file");
    folder.folder("folder");
    EXPECT_EQ(sizeOf("/file"), 0);
    EXPECT_EQ(sizeOf("/folder"), 0);
}

TEST_F(FootprintCalculatorTest, FoldersThemselvesAddNothing) {
    folder.file("tree/a/b/c/file", kSome);
    folder.folder("tree/d/e/f");
    EXPECT_EQ(sizeOf("/tree"), folder.allocationOf("tree/a/b/c/file"));
}

TEST_F(FootprintCalculatorTest, AnApplicationIsMeasuredWithEverythingInsideHiddenFilesIncluded) {
    const std::array paths = {"Tool.app/Contents/Info.plist",
                              "Tool.app/Contents/MacOS/Tool",
                              "Tool.app/Contents/.hidden/.deep",
                              "Tool.app/.DS_Store",
                              "Tool.app/._double",
                              "Tool.app/Contents/PlugIns/Inner.bundle/Contents/MacOS/Inner"};
    Bytes expected = 0;
    for (const auto* path : paths) {
        folder.file(path, kSome);
        expected += folder.allocationOf(path);
    }
    EXPECT_EQ(sizeOf("/Tool.app"), expected);
}

TEST_F(FootprintCalculatorTest, ALinkInsideAFolderAddsNothing) {
    folder.file("outside/large", kMore);
    folder.file("tree/file", kSome);
    folder.link("tree/toFile", "file");
    folder.link("tree/toLarge", "/outside/large");
    folder.link("tree/toFolder", "/outside");
    folder.link("tree/toParent", "..");
    folder.link("tree/dangling", "nowhere");
    // A text too long to be kept in the file's own record takes a block of the disk, and still adds nothing.
    folder.link("tree/long", std::string(1'000, 'x'));
    EXPECT_EQ(sizeOf("/tree"), folder.allocationOf("tree/file"));
}

TEST_F(FootprintCalculatorTest, ALinkMeasuresZeroWhateverItLeadsTo) {
    folder.file("tree/file", kSome);
    folder.link("toFolder", "tree");
    folder.link("toFile", "tree/file");
    folder.link("dangling", "nowhere");
    EXPECT_EQ(sizeOf("/toFolder"), 0);
    EXPECT_EQ(sizeOf("/toFile"), 0);
    EXPECT_EQ(sizeOf("/dangling"), 0);
}

TEST_F(FootprintCalculatorTest, AFolderBelowALinkIsMeasured) {
    folder.file("real/tree/file", kSome);
    folder.link("link", "real");
    EXPECT_EQ(sizeOf("/link/tree"), folder.allocationOf("real/tree/file"));
}

TEST_F(FootprintCalculatorTest, ASparseFileCountsForWhatItTakes) {
    folder.sparse("tree/sparse", 5'000'000'000);
    EXPECT_LT(sizeOf("/tree"), 100'000);
    EXPECT_LT(sizeOf("/tree/sparse"), 100'000);
}

TEST_F(FootprintCalculatorTest, AFileWithTwoNamesInTheTreeCountsTwice) {
    folder.file("tree/one", kSome);
    folder.hardLink("tree/sub/two", "tree/one");
    EXPECT_EQ(sizeOf("/tree"), 2 * folder.allocationOf("tree/one"));
}

TEST_F(FootprintCalculatorTest, SpecialEntriesAddNothing) {
    folder.fifo("tree/pipe");
    EXPECT_EQ(sizeOf("/tree"), 0);
    EXPECT_EQ(sizeOf("/tree/pipe"), 0);
}

TEST_F(FootprintCalculatorTest, FoldersThatCannotBeReadAreSkippedAndTheRestCounts) {
    folder.file("tree/a/file", kSome);
    folder.file("tree/locked/file", kMore);
    folder.file("tree/z/file", kSome);
    folder.permissions("tree/locked", 0);
    const OrdinaryUser ordinary;
    EXPECT_EQ(sizeOf("/tree"), folder.allocationOf("tree/a/file") + folder.allocationOf("tree/z/file"));
    EXPECT_EQ(sizeOf("/tree/locked"), 0);
}

TEST_F(FootprintCalculatorTest, WhatVanishesDuringTheWalkCountsNothing) {
    folder.file("tree/stays", kSome);
    folder.file("tree/goes", kMore);
    folder.file("tree/sub/goesToo", kMore);
    faulty.vanish(FileURL("/tree/goes"));
    faulty.vanish(FileURL("/tree/sub"));
    EXPECT_EQ(sizeOf(faulty, "/tree"), folder.allocationOf("tree/stays"));
}

TEST_F(FootprintCalculatorTest, ATreeThatCannotBeWalkedMeasuresZero) {
    folder.file("tree/file", kSome);
    faulty.failEvery(FileCall::walk, {ErrorCode::kReadUnknown, EIO});
    EXPECT_EQ(sizeOf(faulty, "/tree"), 0);
}

TEST_F(FootprintCalculatorTest, AFileIsNotWalked) {
    folder.file("file", kSome);
    EXPECT_EQ(sizeOf(recorded, "/file"), folder.allocationOf("file"));
    EXPECT_THAT(recorded.calls(FileCall::walk), testing::IsEmpty());
}

TEST_F(FootprintCalculatorTest, AMeasurementAsksOnceForTheRootAndWalksOnce) {
    folder.file("tree/a/file", kSome);
    folder.file("tree/b/file", kSome);
    EXPECT_GT(sizeOf(recorded, "/tree"), 0);
    const FileURL tree("/tree");
    EXPECT_THAT(recorded.calls(),
                testing::ElementsAre(RecordingFileSystem::Call{FileCall::resourceValues, tree},
                                     RecordingFileSystem::Call{FileCall::walk, tree}));
}

TEST_F(FootprintCalculatorTest, AStoppedMeasurementGivesTheFigureReachedSoFar) {
    TableFileSystem table(disk);
    table.root.type = EntryType::directory;
    for (const auto* name : {"one", "two", "three", "four"}) {
        table.entries.push_back({.name = name, .type = EntryType::regular, .level = 1, .allocated = 1'000});
    }
    RecordingFileSystem watched(table);
    StopSource source;
    watched.beforeEachEntry([&](const FileURL& url) {
        if (url.lastPathComponent() == "three") {
            source.requestStop();
        }
    });
    EXPECT_EQ(sizeOf(watched, "/tree", source.token()), 2'000);
}

TEST_F(FootprintCalculatorTest, AStopEndsTheWalk) {
    folder.file("tree/a", kSome);
    folder.file("tree/b", kSome);
    folder.file("tree/c", kSome);
    StopSource source;
    int entries = 0;
    recorded.beforeEachEntry([&](const FileURL&) {
        if (++entries == 2) {
            source.requestStop();
        }
    });
    EXPECT_EQ(sizeOf(recorded, "/tree", source.token()), folder.allocationOf("tree/a"));
    EXPECT_EQ(entries, 2);
}

TEST_F(FootprintCalculatorTest, AFileIsMeasuredEvenWhenStopped) {
    folder.file("file", kSome);
    StopSource source;
    source.requestStop();
    EXPECT_EQ(sizeOf("/file", source.token()), folder.allocationOf("file"));
    EXPECT_EQ(sizeOf("/", source.token()), 0);
}

TEST_F(FootprintCalculatorTest, TheTotalOutranksTheDataAndEitherMayBeAbsent) {
    struct Row {
        std::optional<Bytes> total;
        std::optional<Bytes> data;
        Bytes expected;
    };
    for (const auto& row :
         {Row{4'096, 1'024, 4'096}, Row{std::nullopt, 1'024, 1'024}, Row{4'096, std::nullopt, 4'096},
          Row{0, 1'024, 0}, Row{std::nullopt, std::nullopt, 0}}) {
        TableFileSystem table(disk);
        table.root.type = EntryType::regular;
        table.root.totalAllocated = row.total;
        table.root.allocated = row.data;
        EXPECT_EQ(sizeOf(table, "/file"), row.expected);
    }
}

TEST_F(FootprintCalculatorTest, OnlyRegularFilesCountWhateverElseClaims) {
    TableFileSystem table(disk);
    table.root.type = EntryType::directory;
    table.entries = {{.name = "file", .type = EntryType::regular, .level = 1, .allocated = 10},
                     {.name = "folder", .type = EntryType::directory, .level = 1, .allocated = 100},
                     {.name = "link", .type = EntryType::symbolicLink, .level = 1, .allocated = 1'000},
                     {.name = "pipe", .type = EntryType::other, .level = 1, .allocated = 10'000}};
    EXPECT_EQ(sizeOf(table, "/tree"), 10);
}

TEST_F(FootprintCalculatorTest, MoreThanFourGigabytesAreCounted) {
    TableFileSystem table(disk);
    table.root.type = EntryType::directory;
    table.entries = {{.name = "a", .type = EntryType::regular, .level = 1, .allocated = 5'000'000'000},
                     {.name = "b", .type = EntryType::regular, .level = 1, .allocated = 7'000'000'000'000}};
    EXPECT_EQ(sizeOf(table, "/tree"), 7'005'000'000'000);
}

TEST_F(FootprintCalculatorTest, AnOverflowingSumStopsTheProcess) {
    TableFileSystem table(disk);
    table.root.type = EntryType::directory;
    const auto most = std::numeric_limits<Bytes>::max();
    table.entries = {{.name = "a", .type = EntryType::regular, .level = 1, .allocated = most},
                     {.name = "b", .type = EntryType::regular, .level = 1, .allocated = 1}};
    EXPECT_DEATH(static_cast<void>(sizeOf(table, "/tree")), "");
}

TEST_F(FootprintCalculatorTest, SeveralMeasurementsAtOnceAgree) {
    for (int i = 0; i < 60; ++i) {
        folder.file("tree/" + std::to_string(i % 6) + "/" + std::to_string(i), kSome);
    }
    const auto expected = 60 * folder.allocationOf("tree/0/0");
    std::array<Bytes, 6> sizes = {};
    std::vector<std::thread> threads;
    threads.reserve(sizes.size());
    for (auto& size : sizes) {
        threads.emplace_back([&] { size = sizeOf("/tree"); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(sizes, testing::Each(expected));
}

} // namespace
} // namespace quillane
