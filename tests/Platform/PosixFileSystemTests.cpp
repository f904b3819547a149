#include "Descriptor.h"
#include "PosixFileSystem.h"
#include "TemporaryFolder.h"
#include "WalkedPaths.h"
#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sys/resource.h>

namespace quillane {
namespace {

using testing::UnorderedElementsAre;

// --- a volume cannot be left

class RootedVolume : public testing::Test {
  protected:
    RootedVolume() {
        outer.file("secret", "secret");
        outer.file("volume/etc/inside", "inside");
    }
    std::string readAll(const std::string& path) const { return files.read(FileURL(path), 100).valueOr(""); }

    TemporaryFolder outer;
    PosixFileSystem files{outer.folder("volume/sub").at("volume"), FileURL("/Users/alex")};
};

TEST_F(RootedVolume, ParentComponentsStopAtItsRoot) {
    for (const auto* path :
         {"/../secret", "/../../../../../../etc/passwd", "/sub/../../secret", "/sub/../../../secret"}) {
        EXPECT_FALSE(files.exists(FileURL(path))) << path;
        EXPECT_FALSE(files.resourceValues(FileURL(path)).ok()) << path;
        EXPECT_EQ(readAll(path), "") << path;
    }
    EXPECT_EQ(readAll("/../../etc/inside"), "inside");
    EXPECT_EQ(files.list(FileURL("/..")).value().size(), 2U);
}

TEST_F(RootedVolume, AbsoluteLinksBeginAtItsRoot) {
    outer.link("volume/toPassword", "/etc/passwd");
    outer.link("volume/toSecret", outer.url("secret").path());
    outer.link("volume/toInside", "/etc/inside");
    outer.link("volume/toEtc", "/etc");
    EXPECT_FALSE(files.exists(FileURL("/toPassword")));
    EXPECT_FALSE(files.exists(FileURL("/toSecret")));
    EXPECT_EQ(readAll("/toInside"), "inside");
    EXPECT_EQ(readAll("/toEtc/inside"), "inside");
    EXPECT_EQ(files.list(FileURL("/toEtc")).value().size(), 1U);
}

TEST_F(RootedVolume, RelativeLinksStopAtItsRoot) {
    outer.link("volume/sub/up", "../../secret");
    outer.link("volume/sub/farUp", "../../../../../../../../etc/inside");
    EXPECT_FALSE(files.exists(FileURL("/sub/up")));
    EXPECT_EQ(readAll("/sub/farUp"), "inside");
}

TEST_F(RootedVolume, AChainOfLinksStaysInside) {
    outer.link("volume/one", "/sub/two");
    outer.link("volume/sub/two", "../three/../../secret");
    outer.link("volume/three", "/..");
    outer.link("volume/four", "/three/..");
    EXPECT_FALSE(files.exists(FileURL("/one")));
    EXPECT_FALSE(files.exists(FileURL("/three/../secret")));
    EXPECT_FALSE(files.exists(FileURL("/four/secret")));
    EXPECT_EQ(readAll("/four/etc/inside"), "inside");
}

TEST_F(RootedVolume, AWalkStaysInside) {
    outer.link("volume/toOutside", outer.path());
    outer.link("volume/sub/up", "../..");
    std::set<std::string> told;
    ASSERT_TRUE(files.walk(FileURL("/../.."), {}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        return WalkAnswer::proceed;
    }));
    EXPECT_THAT(told, UnorderedElementsAre("sub", "up", "etc", "inside", "toOutside"));
}

TEST_F(RootedVolume, ResolvedPathsAreTheVolumesOwn) {
    outer.link("volume/toEtc", "/etc");
    outer.link("volume/sub/up", "../../../etc");
    EXPECT_EQ(files.resolvingSymlinks(FileURL("/toEtc/inside")).path(), "/etc/inside");
    EXPECT_EQ(files.resolvingSymlinks(FileURL("/sub/up/inside")).path(), "/etc/inside");
    EXPECT_EQ(files.standardized(FileURL("/../../secret")).path(), "/secret");
}

TEST_F(RootedVolume, HostPathsLieBelowItsFolder) {
    const auto base = outer.url("volume").path();
    outer.link("volume/toRoot", "/");
    outer.link("volume/toOutside", outer.path());
    outer.link("volume/toEtc", "/etc");
    EXPECT_EQ(files.hostPath(FileURL("/")), base);
    EXPECT_EQ(files.hostPath(FileURL("/etc/inside")), base + "/etc/inside");
    EXPECT_EQ(files.hostPath(FileURL("/toEtc/inside")), base + "/etc/inside");
    EXPECT_EQ(files.hostPath(FileURL("/toEtc")), base + "/toEtc");
    EXPECT_EQ(files.hostPath(FileURL("/toRoot/etc/new")), base + "/etc/new");
    EXPECT_EQ(files.hostPath(FileURL("/../../secret")), base + "/secret");
    EXPECT_EQ(files.hostPath(FileURL("/new")), base + "/new");
    EXPECT_EQ(files.hostPath(FileURL("/missing/new")), base + "/missing/new");
    EXPECT_EQ(files.hostPath(FileURL("/..")), base);
}

TEST_F(RootedVolume, AMissingFolderIsAVolumeWithNothing) {
    const PosixFileSystem missing(outer.at("missing"), FileURL("/Users/alex"));
    EXPECT_FALSE(missing.exists(FileURL("/")));
    EXPECT_FALSE(missing.exists(FileURL("/etc/passwd")));
    EXPECT_EQ(missing.list(FileURL("/")).error().code, ErrorCode::kReadNoSuchFile);
}

TEST_F(RootedVolume, KeepsTheHomeItWasGiven) {
    EXPECT_EQ(files.home(), FileURL("/Users/alex"));
}

// --- other names of the same files

TEST(PosixFileSystem, AliasPrefixesAreDroppedWhereTheRestExists) {
    TemporaryFolder volume;
    volume.file("private/etc/hosts");
    volume.file("etc/hosts");
    volume.file("private/Users/alex/file");
    volume.file("Users/alex/file");
    volume.file("private/var/automount/nfs/file");
    volume.file("var/automount/nfs/file");
    volume.file("nfs/file");
    volume.file("private/onlyThere");
    volume.file("privateer/etc/hosts");
    const PosixFileSystem files(volume.path(), FileURL("/Users/alex"));
    const std::vector<std::pair<std::string, std::string>> table = {
        {"/private/etc/hosts", "/etc/hosts"},
        {"/private/etc", "/etc"},
        {"/private/nonexist", "/private/nonexist"},
        {"/private/onlyThere", "/private/onlyThere"},
        {"/private/Users/alex/file", "/private/Users/alex/file"},
        {"/private/var/automount/nfs/file", "/nfs/file"},
        {"/var/automount/nfs/file", "/nfs/file"},
        {"/var/automount/gone", "/var/automount/gone"},
        {"/private", "/private"},
        {"/privateer/etc/hosts", "/privateer/etc/hosts"},
        {"/private/../private/etc/hosts", "/etc/hosts"},
    };
    for (const auto& [given, expected] : table) {
        EXPECT_EQ(files.standardized(FileURL(given)).path(), expected) << given;
        EXPECT_EQ(files.resolvingSymlinks(FileURL(given)).path(), expected) << given;
    }
}

TEST(PosixFileSystem, EveryFolderThatHasItsOwnMeaningKeepsThePrefix) {
    TemporaryFolder volume;
    for (const std::string name : {"Applications", "Library", "System", "Users", "Volumes", "bin", "cores",
                                   "dev", "opt", "private", "sbin", "usr"}) {
        volume.file(name + "/x");
        volume.file("private/" + name + "/x");
    }
    const PosixFileSystem files(volume.path(), FileURL("/"));
    for (const std::string name : {"Applications", "Library", "System", "Users", "Volumes", "bin", "cores",
                                   "dev", "opt", "private", "sbin", "usr"}) {
        EXPECT_EQ(files.standardized(FileURL("/private/" + name + "/x")).path(), "/private/" + name + "/x");
    }
}

// --- the walk's bounds

int openDescriptors() {
    int count = 0;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        count += ::fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
    }
    return count;
}

// Leaves the process only so many more descriptors for the length of a block.
class FewDescriptors {
  public:
    explicit FewDescriptors(rlim_t more) {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const Descriptor next(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        rlimit few = m_before;
        few.rlim_cur = static_cast<rlim_t>(next.get()) + more;
        ::setrlimit(RLIMIT_NOFILE, &few);
    }
    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

  private:
    rlimit m_before = {};
};

TEST(PosixFileSystem, HostPathOfTheMachineIsThePath) {
    EXPECT_EQ(PosixFileSystem().hostPath(FileURL("/a/../b")), "/a/../b");
}

TEST(PosixWalk, TenThousandLevelsAreWalkedWithFewDescriptors) {
    TemporaryFolder folder;
    folder.chain("deep", 10'000, "bottom");
    folder.file("deep/beside");
    const int before = openDescriptors();
    int most = 0;
    int deepest = 0;
    int told = 0;
    ASSERT_TRUE(PosixFileSystem().walk(folder.url("deep"), {.measures = true}, [&](const WalkEntry& entry) {
        ++told;
        deepest = std::max(deepest, entry.level);
        if (entry.level % 100 == 0) {
            most = std::max(most, openDescriptors() - before);
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(told, 10'002);
    EXPECT_EQ(deepest, 10'001);
    EXPECT_LE(most, 24);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(PosixWalk, WhatLiesBesideADeepChainIsWalkedOnTheWayBack) {
    TemporaryFolder folder;
    std::set<std::string> made;
    std::string path = "tree";
    for (int level = 0; level < 60; ++level) {
        for (const auto* side : {"/a", "/m", "/z"}) {
            folder.file(path + side + "/file");
            made.insert(path + side);
            made.insert(path + side + "/file");
        }
        path += "/k";
        folder.folder(path);
        made.insert(path);
    }
    std::set<std::string> told;
    WalkedPaths paths(folder.url("tree"));
    ASSERT_TRUE(PosixFileSystem().walk(folder.url("tree"), {}, [&](const WalkEntry& entry) {
        EXPECT_TRUE(told.insert(paths.told(entry).path().substr(folder.path().size() + 1)).second);
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(told, made);
}

TEST(PosixWalk, TooFewDescriptorsAreMadeToDo) {
    TemporaryFolder folder;
    folder.chain("deep", 50);
    const PosixFileSystem files;
    int told = 0;
    {
        const FewDescriptors few(6);
        ASSERT_TRUE(files.walk(folder.url("deep"), {}, [&](const WalkEntry&) {
            ++told;
            return WalkAnswer::proceed;
        }));
    }
    EXPECT_EQ(told, 51);
}

TEST(PosixWalk, MoreFoldersThanNamesAreKeptAreAllToldOnce) {
    // Over a mebibyte of folder names in one folder, some with chains below that are deeper than descriptors
    // are kept, so that the folder is closed in the middle of its entries and taken up again there.
    TemporaryFolder folder;
    std::set<std::string> made;
    for (int i = 0; i < 5'500; ++i) {
        const auto number = std::to_string(i);
        const auto name = std::string(250 - number.size(), 'n') + number;
        folder.folder("tree/wide/" + name);
        if (i % 500 == 0) {
            folder.chain("tree/wide/" + name, 30);
            folder.file("tree/wide/" + name + "/d/beside/file");
        }
        made.insert(name);
    }
    std::set<std::string> told;
    int leaves = 0;
    int beside = 0;
    ASSERT_TRUE(PosixFileSystem().walk(folder.url("tree"), {}, [&](const WalkEntry& entry) {
        leaves += entry.name == "leaf" && entry.level == 33 ? 1 : 0;
        beside += entry.name == "file" && entry.level == 5 ? 1 : 0;
        if (entry.level == 2) {
            EXPECT_TRUE(told.emplace(entry.name).second);
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(told, made);
    EXPECT_EQ(leaves, 11);
    EXPECT_EQ(beside, 11);
}

TEST(PosixWalk, AFolderThatIsMovedAwayMeanwhileDoesNotLeadTheWalkAstray) {
    // Where the walk stands is moved next to strangers with the names of the folders that it has yet to enter.
    TemporaryFolder folder;
    for (const auto* name : {"s0", "s1", "s2", "s3", "s4", "s5"}) {
        folder.chain(std::string("root/a/b/c/") + name, 40);
        folder.file(std::string("elsewhere/") + name + "/stranger");
    }
    folder.file("root/beside/file");
    std::set<std::string> told;
    std::string moved;
    WalkedPaths paths(folder.url("root"));
    ASSERT_TRUE(PosixFileSystem().walk(folder.url("root"), {}, [&](const WalkEntry& entry) {
        told.emplace(entry.name);
        EXPECT_TRUE(entry.level > 1 || entry.name == "a" || entry.name == "beside") << entry.name;
        const auto path = paths.told(entry).path();
        if (entry.level == 40 && moved.empty()) {
            moved = path.substr(folder.at("root/a/b/c/").size(), 2);
            folder.rename("root/a/b/c/" + moved, "elsewhere/moved");
        }
        return WalkAnswer::proceed;
    }));
    EXPECT_EQ(moved.size(), 2U);
    EXPECT_TRUE(told.contains("leaf"));
    EXPECT_TRUE(told.contains("beside"));
    EXPECT_FALSE(told.contains("stranger"));
    EXPECT_FALSE(told.contains("moved"));
}

} // namespace
} // namespace quillane
