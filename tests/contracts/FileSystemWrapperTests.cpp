// What the wrappers do beyond passing calls on.
#include "FaultFileSystem.h"
#include "PosixFileSystem.h"
#include "RecordingFileSystem.h"
#include "TemporaryFolder.h"
#include "WalkedPaths.h"
#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr PlatformError kFailure = {ErrorCode::kReadUnknown, EIO};

class FileSystemWrappers : public testing::Test {
  protected:
    FileSystemWrappers() {
        folder.file("tree/a/file", "bytes");
        folder.file("tree/b/file", "bytes");
        folder.file("tree/top", "bytes");
    }
    static std::set<std::string> namesWalked(const FileSystem& files, const FileURL& root) {
        std::set<std::string> names;
        WalkedPaths paths(root);
        EXPECT_TRUE(files.walk(root, {.measures = true}, [&](const WalkEntry& entry) {
            names.insert(paths.told(entry).path().substr(root.path().size() + 1) +
                         (entry.allocated > 0 ? "+" : ""));
            return WalkAnswer::proceed;
        }));
        return names;
    }

    TemporaryFolder folder;
    PosixFileSystem disk{folder.path(), FileURL("/")};
    FaultFileSystem faulty{disk};
    RecordingFileSystem recorded{disk};
    const FileURL tree{"/tree"};
};

TEST_F(FileSystemWrappers, EveryCallOfAKindFails) {
    faulty.failEvery(FileCall::list, kFailure);
    EXPECT_EQ(faulty.list(tree).error(), kFailure);
    EXPECT_EQ(faulty.list(tree).error(), kFailure);
    EXPECT_TRUE(faulty.resourceValues(tree).ok());
}

TEST_F(FileSystemWrappers, OnlyTheNthCallFails) {
    faulty.failNth(FileCall::list, 2, kFailure);
    EXPECT_TRUE(faulty.list(tree).ok());
    EXPECT_EQ(faulty.list(tree).error(), kFailure);
    EXPECT_TRUE(faulty.list(tree).ok());
    EXPECT_TRUE(faulty.list(tree).ok());
}

TEST_F(FileSystemWrappers, OnlyTheChosenPathFails) {
    faulty.fail(FileURL("/tree/top"), kFailure);
    EXPECT_EQ(faulty.read(FileURL("/tree/top"), 9).error(), kFailure);
    EXPECT_EQ(faulty.resourceValues(FileURL("/tree/top")).error(), kFailure);
    EXPECT_FALSE(faulty.exists(FileURL("/tree/top")));
    EXPECT_TRUE(faulty.read(FileURL("/tree/a/file"), 9).ok());
}

TEST_F(FileSystemWrappers, AVanishedFolderIsNamedAndNothingMore) {
    faulty.vanish(FileURL("/tree/a"));
    EXPECT_EQ(faulty.list(tree)->size(), 3U);
    EXPECT_FALSE(faulty.exists(FileURL("/tree/a/file")));
    EXPECT_EQ(faulty.list(FileURL("/tree/a")).error().code, ErrorCode::kReadNoSuchFile);
    EXPECT_THAT(namesWalked(faulty, tree), UnorderedElementsAre("a", "b", "b/file+", "top+"));
}

TEST_F(FileSystemWrappers, PropertiesThatAWalkTellsFailAndAreRecordedLikeThoseOfAPath) {
    faulty.fail(FileURL("/tree/top"), kFailure);
    RecordingFileSystem record(faulty);
    ASSERT_TRUE(record.walk(tree, {}, [](const WalkEntry& entry) {
        const auto values = entry.resourceValues();
        EXPECT_EQ(values.ok(), entry.name != "top") << entry.name;
        EXPECT_TRUE(values.ok() || values.error() == kFailure);
        return WalkAnswer::skipBelow;
    }));
    EXPECT_THAT(record.calls(FileCall::resourceValues),
                UnorderedElementsAre(FileURL("/tree/a"), FileURL("/tree/b"), FileURL("/tree/top")));
    EXPECT_THAT(faulty.touched(), testing::Contains(FileURL("/tree/top")));
}

TEST_F(FileSystemWrappers, AVanishedFileMeasuresNothing) {
    faulty.vanish(FileURL("/tree/top"));
    EXPECT_THAT(namesWalked(faulty, tree), UnorderedElementsAre("a", "a/file+", "b", "b/file+", "top"));
}

TEST_F(FileSystemWrappers, ADeniedFolderIsToldAndNotEntered) {
    faulty.deny(FileURL("/tree/a"));
    EXPECT_EQ(faulty.list(FileURL("/tree/a")).error().code, ErrorCode::kReadNoPermission);
    EXPECT_TRUE(faulty.exists(FileURL("/tree/a")));
    EXPECT_THAT(namesWalked(faulty, tree), UnorderedElementsAre("a", "b", "b/file+", "top+"));
}

TEST_F(FileSystemWrappers, TheRecordHoldsTheCallsInTheirOrder) {
    static_cast<void>(recorded.exists(tree));
    static_cast<void>(recorded.list(tree));
    static_cast<void>(recorded.read(FileURL("/tree/top"), 1));
    EXPECT_THAT(recorded.calls(),
                ElementsAre(RecordingFileSystem::Call{FileCall::exists, tree},
                            RecordingFileSystem::Call{FileCall::list, tree},
                            RecordingFileSystem::Call{FileCall::read, FileURL("/tree/top")}));
    EXPECT_THAT(recorded.calls(FileCall::read), ElementsAre(FileURL("/tree/top")));
}

TEST_F(FileSystemWrappers, TheRecordHoldsTheFoldersThatAWalkEntered) {
    ASSERT_TRUE(recorded.walk(tree, {}, [](const WalkEntry& entry) {
        return entry.name == "b" ? WalkAnswer::skipBelow : WalkAnswer::proceed;
    }));
    EXPECT_THAT(recorded.entered(), ElementsAre(tree, FileURL("/tree/a")));
}

TEST_F(FileSystemWrappers, HooksRunBeforeTheCallAndBeforeTheEntry) {
    std::vector<std::string> events;
    recorded.beforeEach(
        [&](const RecordingFileSystem::Call& call) { events.push_back("call " + call.url.path()); });
    recorded.beforeEachEntry([&](const FileURL& url) { events.push_back("entry " + url.path()); });
    ASSERT_TRUE(recorded.walk(FileURL("/tree/a"), {}, [&](const WalkEntry& entry) {
        events.push_back("told " + std::string(entry.name));
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(events, ElementsAre("call /tree/a", "entry /tree/a/file", "told file"));
}

// Whether so many bytes from an offset can be read.
bool isReadable(OpenFile& file, Bytes offset, std::size_t count) {
    std::vector<std::byte> buffer(count);
    return file.readAt(buffer, offset).ok();
}

TEST_F(FileSystemWrappers, OnlyReadsThatTakeTheBadByteFail) {
    const FileURL top("/tree/top");
    faulty.failReadingAt(top, 3, kFailure);
    const auto file = faulty.openForReading(top);
    ASSERT_TRUE(file.ok());
    EXPECT_TRUE(isReadable(**file, 0, 3));
    EXPECT_FALSE(isReadable(**file, 0, 4));
    EXPECT_FALSE(isReadable(**file, 3, 1));
    EXPECT_TRUE(isReadable(**file, 4, 1));
    EXPECT_TRUE((*file)->close());
}

TEST_F(FileSystemWrappers, AnAttributeCanFailAndAFileCanAwaitItsDownload) {
    const FileURL top("/tree/top");
    const FileURL other("/tree/a/file");
    folder.attribute("tree/top", "com.example.mark", "value");
    EXPECT_EQ(faulty.extendedAttribute(top, "com.example.mark", 9).valueOr(""), "value");
    faulty.failNth(FileCall::extendedAttribute, 1, kFailure);
    EXPECT_EQ(faulty.extendedAttribute(top, "com.example.mark", 9).error(), kFailure);
    faulty.sendToTheCloud(top);
    EXPECT_TRUE(faulty.isAwaitingDownload(top));
    EXPECT_FALSE(faulty.isAwaitingDownload(other));
}

TEST_F(FileSystemWrappers, TheRoomOfAVolumeCanFailAndCanBePretended) {
    static_cast<void>(recorded.volumeSpace(tree));
    EXPECT_THAT(recorded.calls(), ElementsAre(RecordingFileSystem::Call{FileCall::volumeSpace, tree}));
    faulty.failNth(FileCall::volumeSpace, 1, kFailure);
    EXPECT_EQ(faulty.volumeSpace(tree).error(), kFailure);
    faulty.pretendSpace({.free = 3, .size = 9});
    EXPECT_EQ(*faulty.volumeSpace(tree), (VolumeSpace{.free = 3, .size = 9}));
}

TEST_F(FileSystemWrappers, EachCallOnAnOpenFileCanFail) {
    const auto file = faulty.openForReading(FileURL("/tree/top"));
    ASSERT_TRUE(file.ok());
    faulty.failNth(FileCall::readAt, 2, kFailure);
    EXPECT_TRUE(isReadable(**file, 0, 1));
    EXPECT_FALSE(isReadable(**file, 0, 1));
    faulty.failNth(FileCall::length, 1, kFailure);
    EXPECT_EQ((*file)->length().error(), kFailure);
    EXPECT_EQ(*(*file)->length(), 5);
    faulty.failEvery(FileCall::close, kFailure);
    EXPECT_EQ((*file)->close().error(), kFailure);
    faulty.failEvery(FileCall::open, kFailure);
    EXPECT_EQ(faulty.openForReading(FileURL("/tree/top")).error(), kFailure);
}

TEST_F(FileSystemWrappers, TheRecordHoldsTheCallsOnAnOpenFile) {
    const FileURL top("/tree/top");
    const auto file = recorded.openForReading(top);
    ASSERT_TRUE(file.ok());
    static_cast<void>((*file)->length());
    EXPECT_TRUE(isReadable(**file, 0, 1));
    static_cast<void>((*file)->close());
    using Call = RecordingFileSystem::Call;
    EXPECT_THAT(recorded.calls(), ElementsAre(Call{FileCall::open, top}, Call{FileCall::length, top},
                                              Call{FileCall::readAt, top}, Call{FileCall::close, top}));
}

TEST(TemporaryFolder, LeavesNothingBehind) {
    PosixFileSystem disk;
    std::optional<TemporaryFolder> folder(std::in_place);
    const auto url = folder->url();
    folder->chain("deep", 3'000);
    folder->file("locked/file");
    folder->permissions("locked", 0);
    folder->fifo("pipe");
    folder->link("loop", "loop");
    ASSERT_TRUE(disk.exists(url));
    folder.reset();
    EXPECT_FALSE(disk.exists(url));
}

} // namespace
} // namespace quillane
