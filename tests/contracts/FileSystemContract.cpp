// What every FileSystem owes its callers, run over the adapters and over the wrappers that tests lay on them.
#include "FaultFileSystem.h"
#include "OddNames.h"
#include "OrdinaryUser.h"
#include "PosixFileSystem.h"
#include "RecordingFileSystem.h"
#include "TemporaryFolder.h"
#include "WalkedPaths.h"
#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sys/statvfs.h>
#include <thread>

namespace quillane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

enum class Root { machine, volume };
enum class Wrapper { none, faults, recording };

struct Arrangement {
    Root root;
    Wrapper wrapper;
};

std::string nameOf(const testing::TestParamInfo<Arrangement>& info) {
    static const std::map<Wrapper, std::string> kWrappers = {
        {Wrapper::none, ""}, {Wrapper::faults, "WithFaultsLaidOver"}, {Wrapper::recording, "Recorded"}};
    return (info.param.root == Root::machine ? "Machine" : "Volume") + kWrappers.at(info.param.wrapper);
}

// A path relative to the temporary folder, with what the walk told of it.
struct Told {
    std::string path;
    EntryType type;
    int level;
    friend bool operator==(const Told&, const Told&) = default;
    friend void PrintTo(const Told& told, std::ostream* out) {
        *out << told.path << " (type " << static_cast<int>(told.type) << ", level " << told.level << ")";
    }
};

class FileSystemContract : public testing::TestWithParam<Arrangement> {
  protected:
    FileSystemContract() {
        m_adapter = GetParam().root == Root::machine
                        ? std::make_unique<PosixFileSystem>()
                        : std::make_unique<PosixFileSystem>(folder.path(), FileURL("/Users/alex"));
        if (GetParam().wrapper == Wrapper::faults) {
            m_wrapper = std::make_unique<FaultFileSystem>(*m_adapter);
        } else if (GetParam().wrapper == Wrapper::recording) {
            m_wrapper = std::make_unique<RecordingFileSystem>(*m_adapter);
        }
    }

    FileSystem& files() const { return m_wrapper ? *m_wrapper : *m_adapter; }
    bool isVolume() const { return GetParam().root == Root::volume; }

    // The same place as folder.url(path), as the file system under test calls it.
    FileURL url(const std::string& path = "") const {
        return isVolume() ? FileURL("/" + path) : folder.url(path);
    }
    std::string pathOf(const std::string& path = "") const { return url(path).path(); }
    // The same place in the standard form, which leaves "/private" out where a path leads there without it.
    std::string standardPathOf(const std::string& path) const {
        constexpr std::string_view kPrivate = "/private";
        const auto whole = pathOf(path);
        const auto rest = whole.substr(whole.starts_with("/private/") ? kPrivate.size() : 0);
        return std::filesystem::exists(rest) ? rest : whole;
    }
    std::string relative(const FileURL& absolute) const {
        const auto base = pathOf();
        return absolute.path().substr(base == "/" ? 1 : base.size() + 1);
    }

    std::vector<Told> walked(const std::string& root = "", WalkOptions options = {}) const {
        std::vector<Told> told;
        WalkedPaths paths(url(root));
        const auto result = files().walk(url(root), options, [&](const WalkEntry& entry) {
            told.push_back({relative(paths.told(entry)), entry.type, entry.level});
            return WalkAnswer::proceed;
        });
        EXPECT_TRUE(result.ok());
        return told;
    }
    std::vector<std::string> walkedPaths(const std::string& root = "") const {
        std::vector<std::string> paths;
        for (const auto& told : walked(root)) {
            paths.push_back(told.path);
        }
        return paths;
    }
    // The measured bytes of each path.
    std::map<std::string, Bytes> measured(const std::string& root = "") const {
        std::map<std::string, Bytes> bytes;
        WalkedPaths paths(url(root));
        const auto result = files().walk(url(root), {.measures = true}, [&](const WalkEntry& entry) {
            bytes[relative(paths.told(entry))] = entry.allocated;
            return WalkAnswer::proceed;
        });
        EXPECT_TRUE(result.ok());
        return bytes;
    }
    // A walk that must fail without telling anything.
    PlatformError walkFailure(const std::string& root) const {
        int told = 0;
        const auto result = files().walk(url(root), {}, [&](const WalkEntry&) {
            ++told;
            return WalkAnswer::proceed;
        });
        EXPECT_EQ(told, 0);
        EXPECT_FALSE(result.ok());
        return result.ok() ? PlatformError{} : result.error();
    }
    std::vector<std::string> listedNames(const std::string& path = "") const {
        const auto entries = files().list(url(path));
        EXPECT_TRUE(entries.ok());
        std::vector<std::string> names;
        for (const auto& entry : entries.ok() ? *entries : std::vector<DirectoryEntry>{}) {
            names.push_back(entry.name);
        }
        return names;
    }

    // So many entries with names of 250 bytes.
    std::set<std::string> manyNames(const std::string& path, int count) const {
        std::set<std::string> names;
        folder.file(path + "/0");
        for (int i = 1; i < count; ++i) {
            const auto number = std::to_string(i);
            std::string name(250 - number.size(), 'n');
            name += number;
            folder.hardLink(path + "/" + name, path + "/0");
            names.insert(std::move(name));
        }
        names.insert("0");
        return names;
    }

    // Tests lay files down while they only look at the rest.
    mutable TemporaryFolder folder;

  private:
    std::unique_ptr<FileSystem> m_adapter;
    std::unique_ptr<FileSystem> m_wrapper;
};

INSTANTIATE_TEST_SUITE_P(Adapters, FileSystemContract,
                         testing::Values(Arrangement{Root::machine, Wrapper::none},
                                         Arrangement{Root::volume, Wrapper::none},
                                         Arrangement{Root::machine, Wrapper::faults},
                                         Arrangement{Root::volume, Wrapper::faults},
                                         Arrangement{Root::machine, Wrapper::recording},
                                         Arrangement{Root::volume, Wrapper::recording}),
                         nameOf);

const std::string kOdd = std::string("caf") + OddNames::kOne + OddNames::kOther;
const std::string kNewline = "two\nlines";
const std::string kLongest(255, 'n');
const std::string kTooLong(256, 'n');

constexpr PlatformError kMissing = {ErrorCode::kReadNoSuchFile, ENOENT};
constexpr PlatformError kNotAFolder = {ErrorCode::kReadUnknown, ENOTDIR};
constexpr PlatformError kNoPermission = {ErrorCode::kReadNoPermission, EACCES};
constexpr PlatformError kInvalidName = {ErrorCode::kReadInvalidName, ENAMETOOLONG};
constexpr PlatformError kLinkLoop = {ErrorCode::kReadUnknown, ELOOP};

// --- exists

TEST_P(FileSystemContract, FilesFoldersAndWhatLinksLeadToExist) {
    folder.file("a/file");
    folder.link("toFile", "a/file");
    folder.link("toFolder", "a");
    folder.link("absolute", pathOf("a/file"));
    folder.link("a/absolute", pathOf("toFile"));
    for (const auto* path :
         {"a", "a/file", "toFile", "toFolder", "toFolder/file", "absolute", "a/absolute", ""}) {
        EXPECT_TRUE(files().exists(url(path))) << path;
    }
}

TEST_P(FileSystemContract, WhatIsMissingOrCannotBeReachedDoesNotExist) {
    folder.file("file");
    folder.link("dangling", "nowhere");
    folder.link("loop", "loop");
    folder.link("ping", "pong");
    folder.link("pong", "ping");
    for (const auto& path : {std::string("missing"), std::string("file/below"), std::string("file/.."),
                             std::string("dangling"), std::string("loop"), std::string("ping"), kTooLong}) {
        EXPECT_FALSE(files().exists(url(path))) << path;
    }
}

TEST_P(FileSystemContract, APathThatHoldsANulReachesNothing) {
    folder.file("file", "bytes");
    const FileURL hostile(pathOf("file") + std::string("\0.txt", 5));
    EXPECT_FALSE(files().exists(hostile));
    EXPECT_FALSE(files().resourceValues(hostile).ok());
    EXPECT_FALSE(files().read(hostile, 10).ok());
    EXPECT_FALSE(files().list(FileURL(pathOf() + std::string("\0x", 2))).ok());
    EXPECT_EQ(files().resolvingSymlinks(hostile), hostile);
}

// --- list

TEST_P(FileSystemContract, AListingNamesTheDirectEntriesWithTheirTypes) {
    folder.file("file");
    folder.file(".hidden");
    folder.file("sub/below");
    folder.link("toFolder", "sub");
    folder.link("dangling", "nowhere");
    folder.fifo("pipe");
    const auto entries = files().list(url());
    ASSERT_TRUE(entries.ok());
    EXPECT_THAT(*entries, UnorderedElementsAre(DirectoryEntry{"file", EntryType::regular},
                                               DirectoryEntry{".hidden", EntryType::regular},
                                               DirectoryEntry{"sub", EntryType::directory},
                                               DirectoryEntry{"toFolder", EntryType::symbolicLink},
                                               DirectoryEntry{"dangling", EntryType::symbolicLink},
                                               DirectoryEntry{"pipe", EntryType::other}));
}

TEST_P(FileSystemContract, AListingLeavesAppleDoubleNamesOut) {
    folder.file("._photo.jpg");
    folder.folder("._folder");
    folder.file("photo.jpg");
    folder.file(".hidden");
    folder.file("_under");
    EXPECT_THAT(listedNames(), UnorderedElementsAre("photo.jpg", ".hidden", "_under"));
}

TEST_P(FileSystemContract, DotNamesAreHidden) {
    folder.file(".hidden").folder(".git").file("file.").folder("_under").link(".link", "file.");
    std::set<std::string> hidden;
    const auto entries = files().list(url()).value();
    for (const auto& entry : entries) {
        if (entry.isHidden()) {
            hidden.insert(entry.name);
        }
    }
    EXPECT_THAT(hidden, UnorderedElementsAre(".hidden", ".git", ".link"));
}

TEST_P(FileSystemContract, AnEmptyFolderListsNothing) {
    folder.folder("empty");
    EXPECT_THAT(listedNames("empty"), IsEmpty());
}

TEST_P(FileSystemContract, AListedLinkToAFolderIsFollowed) {
    folder.file("real/inside");
    folder.link("relative", "real");
    folder.link("absolute", pathOf("real"));
    folder.link("chained", "relative");
    for (const auto* path : {"relative", "absolute", "chained"}) {
        EXPECT_THAT(listedNames(path), ElementsAre("inside")) << path;
    }
}

TEST_P(FileSystemContract, AListingKeepsTheBytesOfNames) {
    folder.file("odd/" + kNewline);
    folder.file("odd/" + kOdd);
    folder.file("odd/" + kLongest);
    folder.file("odd/ ");
    EXPECT_THAT(listedNames("odd"), UnorderedElementsAre(kNewline, kOdd, kLongest, " "));
}

TEST_P(FileSystemContract, AListingNamesEachOfManyEntriesOnce) {
    const auto made = manyNames("many", 300); // more than one call of the system hands out
    const auto names = listedNames("many");
    EXPECT_EQ(names.size(), made.size());
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()), made);
}

TEST_P(FileSystemContract, AListingTellsWhyItFails) {
    folder.file("file");
    folder.link("dangling", "nowhere");
    folder.link("loop", "loop");
    EXPECT_EQ(files().list(url("missing")).error(), kMissing);
    EXPECT_EQ(files().list(url("file")).error(), kNotAFolder);
    EXPECT_EQ(files().list(url("dangling")).error(), kMissing);
    EXPECT_EQ(files().list(url("loop")).error(), kLinkLoop);
    EXPECT_EQ(files().list(url(kTooLong)).error(), kInvalidName);
}

TEST_P(FileSystemContract, AFolderThatCannotBeReadIsAPermissionFailure) {
    folder.file("locked/file", "bytes");
    folder.permissions("locked", 0);
    const OrdinaryUser ordinary;
    EXPECT_EQ(files().list(url("locked")).error(), kNoPermission);
    EXPECT_EQ(walkFailure("locked"), kNoPermission);
    EXPECT_EQ(files().resourceValues(url("locked/file")).error(), kNoPermission);
    EXPECT_EQ(files().read(url("locked/file"), 10).error(), kNoPermission);
    EXPECT_FALSE(files().exists(url("locked/file")));
    EXPECT_TRUE(files().exists(url("locked")));
}

// --- resourceValues

TEST_P(FileSystemContract, ARegularFileHasItsLengthAllocationAndDate) {
    folder.file("file", std::string(10000, 'x'));
    folder.modified("file", Date::fromUnix(1700000000, 500000000));
    const auto values = files().resourceValues(url("file"));
    ASSERT_TRUE(values.ok());
    EXPECT_EQ(values->type, EntryType::regular);
    EXPECT_EQ(values->fileSize, 10000);
    EXPECT_EQ(values->allocated, folder.allocationOf("file"));
    EXPECT_EQ(values->totalAllocated, folder.allocationOf("file"));
    EXPECT_GE(values->totalAllocated, 10000);
    EXPECT_NEAR(values->contentModified.secondsSince1970(), 1700000000.5, 0.001);
}

TEST_P(FileSystemContract, ASparseFileIsLongAndTakesNoSpace) {
    folder.sparse("sparse", 1'000'000'000);
    const auto values = files().resourceValues(url("sparse"));
    ASSERT_TRUE(values.ok());
    EXPECT_EQ(values->fileSize, 1'000'000'000);
    EXPECT_LT(values->totalAllocated, 100'000);
}

TEST_P(FileSystemContract, OnlyRegularFilesHaveAnAllocation) {
    folder.folder("sub");
    folder.file("file", "bytes");
    folder.link("link", "file");
    folder.fifo("pipe");
    const std::map<std::string, EntryType> expected = {
        {"sub", EntryType::directory}, {"link", EntryType::symbolicLink}, {"pipe", EntryType::other}};
    for (const auto& [path, type] : expected) {
        const auto values = files().resourceValues(url(path));
        ASSERT_TRUE(values.ok()) << path;
        EXPECT_EQ(values->type, type) << path;
        EXPECT_EQ(values->allocated, std::nullopt) << path;
        EXPECT_EQ(values->totalAllocated, std::nullopt) << path;
    }
}

TEST_P(FileSystemContract, TheValuesOfALinkAreItsOwn) {
    folder.file("file", std::string(5000, 'x'));
    folder.link("link", "file");
    folder.link("dangling", "nowhere at all");
    EXPECT_EQ(files().resourceValues(url("link"))->fileSize, 4);
    ASSERT_TRUE(files().resourceValues(url("dangling")).ok());
    EXPECT_EQ(files().resourceValues(url("dangling"))->fileSize, 14);
}

TEST_P(FileSystemContract, LinksBeforeTheLastComponentAreFollowed) {
    folder.file("real/file", "12345");
    folder.link("toFolder", pathOf("real"));
    EXPECT_EQ(files().resourceValues(url("toFolder/file"))->fileSize, 5);
}

TEST_P(FileSystemContract, TwoNamesOfOneFileShareAnIdentity) {
    folder.file("one", "bytes");
    folder.hardLink("two", "one");
    folder.file("other", "bytes");
    const auto one = files().resourceValues(url("one"));
    const auto two = files().resourceValues(url("two"));
    const auto other = files().resourceValues(url("other"));
    EXPECT_EQ(std::pair(one->device, one->inode), std::pair(two->device, two->inode));
    EXPECT_NE(one->inode, other->inode);
}

TEST_P(FileSystemContract, ResourceValuesTellWhyTheyFail) {
    folder.file("file");
    EXPECT_EQ(files().resourceValues(url("missing")).error(), kMissing);
    EXPECT_EQ(files().resourceValues(url("file/below")).error(), kNotAFolder);
    EXPECT_EQ(files().resourceValues(url(kTooLong)).error(), kInvalidName);
}

// --- volumeSpace

TEST_P(FileSystemContract, AFolderTellsTheRoomOfItsVolume) {
    folder.folder("a/b");
    folder.link("toFolder", "a/b");
    struct statvfs told = {};
    ASSERT_EQ(::statvfs(folder.path().c_str(), &told), 0);
    const auto size = static_cast<Bytes>(told.f_blocks * told.f_frsize);
    for (const char* path : {"", "a", "a/b", "toFolder"}) {
        const auto space = files().volumeSpace(url(path));
        ASSERT_TRUE(space.ok()) << path;
        EXPECT_EQ(space->size, size) << path;
        EXPECT_GT(space->free, 0) << path;
        EXPECT_LE(space->free, space->size) << path;
    }
}

TEST_P(FileSystemContract, TheRoomOfAVolumeTellsWhyItFails) {
    folder.file("file");
    folder.fifo("pipe");
    folder.link("dangling", "nowhere");
    EXPECT_EQ(files().volumeSpace(url("missing")).error(), kMissing);
    EXPECT_EQ(files().volumeSpace(url("dangling")).error(), kMissing);
    EXPECT_EQ(files().volumeSpace(url("file")).error(), kNotAFolder);
    EXPECT_EQ(files().volumeSpace(url("pipe")).error(), kNotAFolder) << "and nobody waits";
    EXPECT_EQ(files().volumeSpace(url(kTooLong)).error(), kInvalidName);
}

// --- extendedAttribute, isAwaitingDownload

TEST_P(FileSystemContract, AnExtendedAttributeIsReadAsItsBytes) {
    const std::string bytes("bplist00\t\0\xff", 11);
    folder.file("file", "content").attribute("file", "com.example.mark", bytes);
    folder.folder("sub").attribute("sub", "com.example.mark", "of a folder");
    EXPECT_EQ(files().extendedAttribute(url("file"), "com.example.mark", 64).valueOr(""), bytes);
    EXPECT_EQ(files().extendedAttribute(url("sub"), "com.example.mark", 11).valueOr(""), "of a folder");
}

TEST_P(FileSystemContract, AnExtendedAttributeThatIsAbsentOrTooLongFails) {
    folder.file("file", "content").attribute("file", "com.example.mark", "value");
    EXPECT_FALSE(files().extendedAttribute(url("file"), "com.example.other", 64).ok());
    EXPECT_FALSE(files().extendedAttribute(url("file"), "com.example.mark", 4).ok());
    EXPECT_FALSE(files().extendedAttribute(url("file"), "com.example.mark", 0).ok());
    EXPECT_EQ(files().extendedAttribute(url("missing"), "com.example.mark", 64).error(), kMissing);
}

TEST_P(FileSystemContract, LinksAndPipesAreNotAskedForAttributes) {
    folder.file("file").attribute("file", "com.example.mark", "value");
    folder.link("link", "file");
    folder.fifo("pipe");
    EXPECT_FALSE(files().extendedAttribute(url("link"), "com.example.mark", 64).ok());
    EXPECT_FALSE(files().extendedAttribute(url("pipe"), "com.example.mark", 64).ok());
}

TEST_P(FileSystemContract, AnOrdinaryFileAwaitsNoDownload) {
    folder.file("file", "content");
    EXPECT_FALSE(files().isAwaitingDownload(url("file")));
    EXPECT_FALSE(files().isAwaitingDownload(url("missing")));
}

// --- walk

TEST_P(FileSystemContract, AWalkTellsEverythingBelowTheRootWithLevelAndType) {
    folder.file("top");
    folder.file("App.app/Contents/Info.plist");
    folder.file(".hidden/.file");
    folder.file("App.app/._double");
    folder.folder("empty");
    folder.fifo("pipe");
    EXPECT_THAT(walked(),
                UnorderedElementsAre(
                    Told{"top", EntryType::regular, 1}, Told{"App.app", EntryType::directory, 1},
                    Told{"App.app/Contents", EntryType::directory, 2},
                    Told{"App.app/Contents/Info.plist", EntryType::regular, 3},
                    Told{"App.app/._double", EntryType::regular, 2}, Told{".hidden", EntryType::directory, 1},
                    Told{".hidden/.file", EntryType::regular, 2}, Told{"empty", EntryType::directory, 1},
                    Told{"pipe", EntryType::other, 1}));
}

TEST_P(FileSystemContract, AWalkOfAnEmptyFolderTellsNothing) {
    folder.folder("empty");
    EXPECT_THAT(walked("empty"), IsEmpty());
}

TEST_P(FileSystemContract, EveryFolderIsToldRightBeforeItsContent) {
    // Paths are built from names and levels alone; a folder told early or late would give paths that are not.
    std::mt19937 random(7);
    std::set<std::string> made;
    std::vector<std::string> folders = {"tree"};
    folder.folder("tree");
    for (int i = 0; i < 300; ++i) {
        const auto path = folders[random() % folders.size()] + "/" + std::to_string(i);
        if (random() % 3 == 0) {
            folder.folder(path);
            folders.push_back(path);
        } else {
            folder.file(path);
        }
        made.insert(path);
    }
    const auto paths = walkedPaths("tree");
    EXPECT_EQ(paths.size(), made.size());
    EXPECT_EQ(std::set<std::string>(paths.begin(), paths.end()), made);
}

TEST_P(FileSystemContract, AWalkTellsLinksAndNeverEntersThem) {
    folder.file("outside/secret");
    folder.file("root/file");
    folder.link("root/toFolder", pathOf("outside"));
    folder.link("root/toParent", "..");
    folder.link("root/toItself", "toItself");
    folder.link("root/dangling", "nowhere");
    EXPECT_THAT(walked("root"), UnorderedElementsAre(Told{"root/file", EntryType::regular, 1},
                                                     Told{"root/toFolder", EntryType::symbolicLink, 1},
                                                     Told{"root/toParent", EntryType::symbolicLink, 1},
                                                     Told{"root/toItself", EntryType::symbolicLink, 1},
                                                     Told{"root/dangling", EntryType::symbolicLink, 1}));
}

TEST_P(FileSystemContract, ARootThatIsNoFolderYieldsNothing) {
    folder.file("real/file");
    folder.link("link", "real");
    folder.link("dangling", "nowhere");
    folder.fifo("pipe");
    EXPECT_EQ(walkFailure("missing"), kMissing);
    EXPECT_EQ(walkFailure("real/file"), kNotAFolder);
    EXPECT_EQ(walkFailure("pipe"), kNotAFolder);
    EXPECT_EQ(walkFailure("link").code, ErrorCode::kReadUnknown);
    EXPECT_EQ(walkFailure("dangling").code, ErrorCode::kReadUnknown);
}

TEST_P(FileSystemContract, ARootBelowALinkIsWalked) {
    folder.file("real/sub/file");
    folder.link("link", "real");
    EXPECT_THAT(walkedPaths("link/sub"), ElementsAre("link/sub/file"));
}

TEST_P(FileSystemContract, AMeasuringWalkTellsTheAllocationOfRegularFilesAlone) {
    folder.file("tree/small", "x");
    folder.file("tree/sub/large", std::string(300'000, 'x'));
    folder.sparse("tree/sparse", 50'000'000);
    folder.link("tree/link", "sub/large");
    folder.hardLink("tree/again", "tree/sub/large");
    const auto bytes = measured("tree");
    EXPECT_EQ(bytes.at("tree/small"), folder.allocationOf("tree/small"));
    EXPECT_GT(bytes.at("tree/small"), 0);
    EXPECT_EQ(bytes.at("tree/sub/large"), folder.allocationOf("tree/sub/large"));
    EXPECT_GE(bytes.at("tree/sub/large"), 300'000);
    EXPECT_LT(bytes.at("tree/sparse"), 100'000);
    EXPECT_EQ(bytes.at("tree/link"), 0);
    EXPECT_EQ(bytes.at("tree/again"), folder.allocationOf("tree/sub/large"));
    EXPECT_EQ(bytes.at("tree/sub"), 0);
}

TEST_P(FileSystemContract, AWalkThatDoesNotMeasureTellsNoBytes) {
    folder.file("tree/file", std::string(5000, 'x'));
    Bytes sum = 0;
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        sum += entry.allocated;
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(sum, 0);
}

TEST_P(FileSystemContract, SkippingBelowAFolderLeavesOutItsContentOnly) {
    folder.file("tree/keep/in");
    folder.file("tree/skip/out");
    folder.file("tree/skip/sub/out");
    folder.file("tree/last");
    std::set<std::string> told;
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        return entry.name == "skip" ? WalkAnswer::skipBelow : WalkAnswer::proceed;
    }));
    EXPECT_THAT(told, UnorderedElementsAre("keep", "in", "skip", "last"));
}

TEST_P(FileSystemContract, SkippingBelowAFileChangesNothing) {
    for (const auto* path : {"tree/a", "tree/b", "tree/sub/c"}) {
        folder.file(path);
    }
    int told = 0;
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        ++told;
        return entry.type == EntryType::directory ? WalkAnswer::proceed : WalkAnswer::skipBelow;
    }));
    EXPECT_EQ(told, 4);
}

TEST_P(FileSystemContract, StoppingEndsTheWalkAtOnce) {
    for (int i = 0; i < 20; ++i) {
        folder.file("tree/" + std::to_string(i) + "/file");
        folder.file("tree/file" + std::to_string(i));
    }
    for (const auto type : {EntryType::regular, EntryType::directory}) {
        int toldAfter = 0;
        bool stopped = false;
        ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
            toldAfter += stopped ? 1 : 0;
            stopped = stopped || entry.type == type;
            return stopped ? WalkAnswer::stop : WalkAnswer::proceed;
        }));
        EXPECT_TRUE(stopped);
        EXPECT_EQ(toldAfter, 0);
    }
}

TEST_P(FileSystemContract, AFolderThatCannotBeReadIsToldAndTheWalkGoesOn) {
    folder.file("tree/a/file");
    folder.file("tree/locked/hidden");
    folder.file("tree/z/file");
    folder.permissions("tree/locked", 0);
    const OrdinaryUser ordinary;
    EXPECT_THAT(walkedPaths("tree"),
                UnorderedElementsAre("tree/a", "tree/a/file", "tree/locked", "tree/z", "tree/z/file"));
}

TEST_P(FileSystemContract, FilesThatCanBeNamedButNotReachedMeasureNothing) {
    folder.file("tree/listable/file", std::string(5000, 'x'));
    folder.file("tree/listable/sub/file", std::string(5000, 'x'));
    folder.file("tree/other", std::string(5000, 'x'));
    folder.permissions("tree/listable", 0444);
    const OrdinaryUser ordinary;
    const auto bytes = measured("tree");
    EXPECT_THAT(bytes, UnorderedElementsAre(testing::Pair("tree/listable", 0),
                                            testing::Pair("tree/listable/file", 0),
                                            testing::Pair("tree/listable/sub", 0),
                                            testing::Pair("tree/other", folder.allocationOf("tree/other"))));
}

TEST_P(FileSystemContract, AWalkKeepsTheBytesOfNames) {
    folder.file("odd/" + kNewline + "/" + kOdd + "/" + kLongest, "x");
    EXPECT_THAT(walkedPaths("odd"), ElementsAre("odd/" + kNewline, "odd/" + kNewline + "/" + kOdd,
                                                "odd/" + kNewline + "/" + kOdd + "/" + kLongest));
    EXPECT_EQ(measured("odd").at("odd/" + kNewline + "/" + kOdd + "/" + kLongest),
              folder.allocationOf("odd/" + kNewline + "/" + kOdd + "/" + kLongest));
}

TEST_P(FileSystemContract, AWalkReachesTheBottomOfADeepTree) {
    folder.chain("deep", 150, "bottom");
    folder.file("deep/beside");
    const auto told = walked("deep");
    ASSERT_EQ(told.size(), 152U);
    const auto leaf = std::ranges::find(told, 151, &Told::level);
    ASSERT_NE(leaf, told.end());
    EXPECT_TRUE(leaf->path.ends_with("/d/leaf"));
}

TEST_P(FileSystemContract, AWalkTellsEachOfManyEntriesOnce) {
    const auto made = manyNames("many", 2'000); // more than two calls of the system hand out
    std::set<std::string> told;
    int count = 0;
    ASSERT_TRUE(files().walk(url("many"), {}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        ++count;
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(count, 2'000);
    EXPECT_EQ(told, made);
}

TEST_P(FileSystemContract, AFolderThatVanishesOnceToldIsPassedOver) {
    folder.file("tree/a/file");
    folder.file("tree/doomed/file");
    folder.file("tree/z/file");
    std::set<std::string> told;
    WalkedPaths paths(url("tree"));
    ASSERT_TRUE(files().walk(url("tree"), {.measures = true}, [&](const WalkEntry& entry) {
        told.insert(relative(paths.told(entry)));
        if (entry.name == "doomed") {
            folder.remove("tree/doomed");
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(told, UnorderedElementsAre("tree/a", "tree/a/file", "tree/doomed", "tree/z", "tree/z/file"));
}

TEST_P(FileSystemContract, AFileThatVanishesDuringTheWalkMeasuresNothingOrWhatItHad) {
    folder.file("tree/one", std::string(5000, 'x'));
    folder.file("tree/two", std::string(5000, 'x'));
    const auto size = folder.allocationOf("tree/one");
    Bytes sum = 0;
    bool first = true;
    ASSERT_TRUE(files().walk(url("tree"), {.measures = true}, [&](const WalkEntry& entry) {
        sum += entry.allocated;
        if (std::exchange(first, false)) {
            folder.remove(entry.name == "one" ? "tree/two" : "tree/one");
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(sum, testing::AnyOf(size, 2 * size));
}

TEST_P(FileSystemContract, AWalkTellsThePropertiesOfEachEntryAsItsPathDoes) {
    folder.file("tree/file", "12345");
    folder.file("tree/sub/deep/other", std::string(5000, 'x'));
    folder.link("tree/link", "file");
    folder.fifo("tree/sub/pipe");
    std::vector<std::string> asked;
    WalkedPaths paths(url("tree"));
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        const auto path = paths.told(entry);
        const auto values = entry.resourceValues();
        const auto expected = files().resourceValues(path);
        EXPECT_TRUE(values.ok() && expected.ok() && *values == *expected && values->type == entry.type)
            << path.path();
        asked.push_back(relative(path));
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(asked, UnorderedElementsAre("tree/file", "tree/sub", "tree/sub/deep", "tree/sub/deep/other",
                                            "tree/link", "tree/sub/pipe"));
}

TEST_P(FileSystemContract, AnEntryThatVanishesOnceToldHasNoProperties) {
    folder.file("tree/file");
    folder.folder("tree/sub");
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        EXPECT_TRUE(entry.resourceValues().ok());
        folder.remove("tree/" + std::string(entry.name));
        EXPECT_EQ(entry.resourceValues().error().code, ErrorCode::kReadNoSuchFile) << entry.name;
        return WalkAnswer::proceed;
    }));
}

TEST_P(FileSystemContract, AFolderThatBecomesALinkOnceToldIsNotEntered) {
    folder.file("outside/secret");
    folder.folder("tree/sub");
    std::set<std::string> told;
    ASSERT_TRUE(files().walk(url("tree"), {}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        if (entry.name == "sub") {
            folder.remove("tree/sub");
            folder.link("tree/sub", pathOf("outside"));
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(told, ElementsAre("sub"));
}

TEST_P(FileSystemContract, WalksInSeveralThreadsDoNotDisturbEachOther) {
    for (int i = 0; i < 100; ++i) {
        folder.link("tree/" + std::to_string(i % 10) + "/" + std::to_string(i), "x");
    }
    std::array<int, 4> told = {};
    std::vector<std::thread> threads;
    threads.reserve(told.size());
    for (int& count : told) {
        threads.emplace_back([&] {
            const auto result = files().walk(url("tree"), {.measures = true}, [&](const WalkEntry&) {
                ++count;
                return WalkAnswer::proceed;
            });
            EXPECT_TRUE(result.ok());
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(told, testing::Each(110));
}

// --- read

TEST_P(FileSystemContract, ReadingGivesTheBeginningUpToTheLimit) {
    std::string bytes;
    for (int i = 0; i < 200'000; ++i) {
        bytes += static_cast<char>(i * 7);
    }
    folder.file("file", bytes);
    for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{65'536}, std::size_t{65'537},
                                    std::size_t{199'999}, std::size_t{200'000}, std::size_t{1'000'000}}) {
        const auto read = files().read(url("file"), limit);
        ASSERT_TRUE(read.ok()) << limit;
        EXPECT_TRUE(*read == bytes.substr(0, limit)) << limit;
    }
}

TEST_P(FileSystemContract, ReadingFollowsLinks) {
    folder.file("sub/file", "content");
    folder.link("relative", "sub/file");
    folder.link("absolute", pathOf("relative"));
    EXPECT_EQ(*files().read(url("absolute"), 100), "content");
    EXPECT_EQ(*files().read(url("relative"), 4), "cont");
}

TEST_P(FileSystemContract, AnEmptyFileReadsAsNoBytes) {
    folder.file("empty");
    const auto read = files().read(url("empty"), 100);
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(*read, "");
}

TEST_P(FileSystemContract, ReadingWhatIsNoFileFailsAndNeverWaits) {
    folder.folder("sub");
    folder.fifo("pipe");
    folder.link("toPipe", "pipe");
    folder.link("toFolder", "sub");
    for (const auto* path : {"sub", "pipe", "toPipe", "toFolder"}) {
        const auto read = files().read(url(path), 100);
        ASSERT_FALSE(read.ok()) << path;
        EXPECT_EQ(read.error().code, ErrorCode::kReadUnknown) << path;
    }
}

TEST_P(FileSystemContract, ReadingTellsWhyItFails) {
    folder.file("file");
    folder.link("dangling", "nowhere");
    folder.link("loop", "loop");
    EXPECT_EQ(files().read(url("missing"), 10).error(), kMissing);
    EXPECT_EQ(files().read(url("dangling"), 10).error(), kMissing);
    EXPECT_EQ(files().read(url("file/below"), 10).error(), kNotAFolder);
    EXPECT_EQ(files().read(url("loop"), 10).error(), kLinkLoop);
    EXPECT_EQ(files().read(url(kTooLong), 10).error(), kInvalidName);
}

TEST_P(FileSystemContract, AFileThatMayNotBeReadIsAPermissionFailure) {
    folder.file("locked", "bytes");
    folder.permissions("locked", 0);
    const OrdinaryUser ordinary;
    EXPECT_EQ(files().read(url("locked"), 10).error(), kNoPermission);
}

// --- openForReading

// Up to so many bytes of an open file from an offset, which must not fail.
std::string readFrom(OpenFile& file, Bytes offset, std::size_t count) {
    std::string bytes(count, '?');
    const auto read = file.readAt(std::as_writable_bytes(std::span(bytes)), offset);
    EXPECT_TRUE(read.ok());
    bytes.resize(read ? *read : 0);
    return bytes;
}

TEST_P(FileSystemContract, AnOpenFileIsReadAnywhere) {
    std::string bytes;
    for (int i = 0; i < 200'000; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    folder.file("file", bytes);
    const auto file = files().openForReading(url("file"));
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(*(*file)->length(), 200'000);
    for (const auto& [offset, count] :
         {std::pair(0, 1), {0, 0}, {199'999, 1}, {65'536, 65'536}, {150'000, 1'000'000}, {0, 200'001}}) {
        const auto begin = static_cast<std::size_t>(offset);
        EXPECT_TRUE(readFrom(**file, offset, static_cast<std::size_t>(count)) ==
                    bytes.substr(begin, static_cast<std::size_t>(count)))
            << offset << ", " << count;
    }
    EXPECT_TRUE((*file)->close());
}

TEST_P(FileSystemContract, BehindItsEndAnOpenFileGivesNothing) {
    folder.file("file", "12345");
    folder.file("empty");
    const auto file = files().openForReading(url("file"));
    const auto empty = files().openForReading(url("empty"));
    ASSERT_TRUE(file.ok() && empty.ok());
    EXPECT_EQ(readFrom(**file, 5, 10), "");
    EXPECT_EQ(readFrom(**file, 5'000'000'000, 10), "");
    EXPECT_EQ(readFrom(**empty, 0, 10), "");
    EXPECT_EQ(*(*empty)->length(), 0);
}

TEST_P(FileSystemContract, AnOpenFileIsReadBehindFourGigabytes) {
    folder.sparse("sparse", 5'000'000'003);
    const auto file = files().openForReading(url("sparse"));
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(*(*file)->length(), 5'000'000'003);
    EXPECT_EQ(readFrom(**file, 5'000'000'000, 10), std::string(3, '\0'));
}

TEST_P(FileSystemContract, AnOpenFileShowsWhatBecomesOfIt) {
    folder.file("file", "12345");
    const auto file = files().openForReading(url("file"));
    ASSERT_TRUE(file.ok());
    folder.file("file", "123456789");
    EXPECT_EQ(*(*file)->length(), 9);
    EXPECT_EQ(readFrom(**file, 5, 10), "6789");
    folder.file("file", "12");
    EXPECT_EQ(*(*file)->length(), 2);
    EXPECT_EQ(readFrom(**file, 0, 10), "12");
}

TEST_P(FileSystemContract, LinksBeforeAnOpenedFileAreFollowedAndTheLastIsNot) {
    folder.file("sub/file", "content");
    folder.link("toFolder", pathOf("sub"));
    folder.link("toFile", "sub/file");
    const auto below = files().openForReading(url("toFolder/file"));
    ASSERT_TRUE(below.ok());
    EXPECT_EQ(readFrom(**below, 0, 100), "content");
    EXPECT_FALSE(files().openForReading(url("toFile")).ok());
}

TEST_P(FileSystemContract, OpeningWhatIsNoFileFailsAndNeverWaits) {
    folder.folder("sub");
    folder.fifo("pipe");
    folder.link("toPipe", "pipe");
    for (const auto* path : {"sub", "pipe", "toPipe"}) {
        const auto file = files().openForReading(url(path));
        ASSERT_FALSE(file.ok()) << path;
        EXPECT_EQ(file.error().code, ErrorCode::kReadUnknown) << path;
    }
}

TEST_P(FileSystemContract, OpeningTellsWhyItFails) {
    folder.file("file", "bytes");
    EXPECT_EQ(files().openForReading(url("missing")).error(), kMissing);
    EXPECT_EQ(files().openForReading(url("file/below")).error(), kNotAFolder);
    EXPECT_EQ(files().openForReading(url(kTooLong)).error(), kInvalidName);
    EXPECT_FALSE(files().openForReading(FileURL(pathOf("file") + std::string("\0.txt", 5))).ok());
    folder.permissions("file", 0);
    const OrdinaryUser ordinary;
    EXPECT_EQ(files().openForReading(url("file")).error(), kNoPermission);
}

TEST_P(FileSystemContract, AFileOfSomebodyElseIsOpened) {
    folder.file("file", "bytes");
    folder.permissions("file", 0444);
    const OrdinaryUser ordinary;
    const auto file = files().openForReading(url("file"));
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(readFrom(**file, 0, 10), "bytes");
}

// --- createDirectories

TEST_P(FileSystemContract, MissingFoldersAreMadeOnTheWay) {
    ASSERT_TRUE(files().createDirectories(url("one/two/three")));
    EXPECT_EQ(files().resourceValues(url("one/two/three"))->type, EntryType::directory);
    EXPECT_THAT(listedNames("one"), ElementsAre("two"));
}

TEST_P(FileSystemContract, AFolderThatIsThereIsFine) {
    folder.file("one/file");
    folder.link("toOne", "one");
    EXPECT_TRUE(files().createDirectories(url("one")));
    EXPECT_TRUE(files().createDirectories(url("toOne")));
    EXPECT_TRUE(files().createDirectories(url("toOne/two")));
    EXPECT_TRUE(files().createDirectories(FileURL("/")));
    EXPECT_THAT(listedNames("one"), UnorderedElementsAre("file", "two"));
}

TEST_P(FileSystemContract, MakingFoldersTellsWhyItFails) {
    folder.file("file");
    folder.link("dangling", "nowhere");
    EXPECT_EQ(files().createDirectories(url("file")).error(),
              (PlatformError{ErrorCode::kWriteFileExists, EEXIST}));
    EXPECT_EQ(files().createDirectories(url("file/below")).error(),
              (PlatformError{ErrorCode::kWriteUnknown, ENOTDIR}));
    EXPECT_EQ(files().createDirectories(url("dangling")).error(),
              (PlatformError{ErrorCode::kWriteFileExists, EEXIST}));
    EXPECT_EQ(files().createDirectories(url(kTooLong)).error(),
              (PlatformError{ErrorCode::kWriteInvalidName, ENAMETOOLONG}));
    EXPECT_FALSE(files().exists(url("nowhere")));
}

TEST_P(FileSystemContract, AFolderThatMayNotBeMadeIsAPermissionFailure) {
    folder.folder("locked");
    const OrdinaryUser ordinary;
    EXPECT_EQ(files().createDirectories(url("locked/new")).error(),
              (PlatformError{ErrorCode::kWriteNoPermission, EACCES}));
}

// --- resolvingSymlinks and standardized

struct PathPair {
    std::string given; // below the folder
    std::string expected;
};

TEST_P(FileSystemContract, ResolvingFollowsEveryLinkOfAPathThatExists) {
    folder.file("dir/sub/file");
    folder.link("link", "dir");
    folder.link("absolute", pathOf("dir"));
    folder.link("chain1", "chain2");
    folder.link("chain2", "chain3/sub");
    folder.link("chain3", "link");
    folder.link("dir/up", "../dir/sub");
    folder.link("dir/sub/top", pathOf("dir/up"));
    for (const auto& [given, expected] :
         {PathPair{"link", "dir"}, PathPair{"link/sub", "dir/sub"}, PathPair{"link/sub/file", "dir/sub/file"},
          PathPair{"absolute/sub", "dir/sub"}, PathPair{"chain1", "dir/sub"},
          PathPair{"chain1/file", "dir/sub/file"}, PathPair{"link/up/file", "dir/sub/file"},
          PathPair{"dir/sub/top/file", "dir/sub/file"}, PathPair{"dir/sub", "dir/sub"},
          PathPair{"link/../dir", "dir"}, PathPair{"chain1/..", "dir"},
          PathPair{"./dir//sub/.", "dir/sub"}}) {
        EXPECT_EQ(files().resolvingSymlinks(url(given)).path(), standardPathOf(expected)) << given;
    }
}

TEST_P(FileSystemContract, ResolvingLeavesAPathThatDoesNotFullyExist) {
    folder.folder("dir");
    folder.file("file");
    folder.link("link", "dir");
    folder.link("dangling", "nowhere");
    folder.link("loop", "loop");
    for (const auto* path :
         {"link/missing/x", "link/missing", "dangling", "loop", "loop/x", "missing", "file/x"}) {
        EXPECT_EQ(files().resolvingSymlinks(url(path)), url(path)) << path;
    }
}

TEST_P(FileSystemContract, StandardizingKeepsLinksAndCleansText) {
    folder.file("dir/sub/file");
    folder.link("link", "dir");
    for (const auto& [given, expected] :
         {PathPair{"link", "link"}, PathPair{"link/sub", "link/sub"}, PathPair{"dir//sub", "dir/sub"},
          PathPair{"./dir/./sub/.", "dir/sub"}, PathPair{"missing//x/./y", "missing/x/y"},
          PathPair{"dir/...", "dir/..."}, PathPair{"dir/..x", "dir/..x"}}) {
        EXPECT_EQ(files().standardized(url(given)).path(), standardPathOf(expected)) << given;
    }
}

TEST_P(FileSystemContract, StandardizingAParentComponentResolvesLinksWhenAllExists) {
    folder.file("dir/sub/file");
    folder.link("deep", "dir/sub");
    for (const auto& [given, expected] :
         {PathPair{"deep/..", "dir"}, PathPair{"deep/../sub/file", "dir/sub/file"},
          PathPair{"dir/../deep", "dir/sub"}}) {
        EXPECT_EQ(files().standardized(url(given)).path(), standardPathOf(expected)) << given;
    }
}

TEST_P(FileSystemContract, StandardizingAParentComponentIsTextWhenSomethingIsMissing) {
    folder.file("dir/sub/file");
    folder.link("deep", "dir/sub");
    for (const auto& [given, expected] :
         {PathPair{"deep/../x", "x"}, PathPair{"missing/../dir", "dir"}, PathPair{"deep/missing/..", "deep"},
          PathPair{"a/b/../../c", "c"}}) {
        EXPECT_EQ(files().standardized(url(given)).path(), standardPathOf(expected)) << given;
    }
}

TEST_P(FileSystemContract, TheRootIsItsOwnParent) {
    for (const auto* path : {"/..", "/../..", "/.", "//", "/"}) {
        EXPECT_EQ(files().standardized(FileURL(path)).path(), "/") << path;
        EXPECT_EQ(files().resolvingSymlinks(FileURL(path)).path(), "/") << path;
    }
}

} // namespace
} // namespace quillane
