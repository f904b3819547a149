// The Trash of another volume than that of the home folder. Each test runs in a process of its own, which
// mounts a small volume that nobody else sees.
#include "FreedesktopTrash.h"
#include "ManualClock.h"
#include "OwnVolume.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include "TrashInfo.h"
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct VolumeTrash : testing::Test {
    VolumeTrash() {
        testing::FLAGS_gtest_death_test_style = "fast";
        disk.folder("home").folder("volume");
    }
    FreedesktopTrash::Places places() const { return {disk.path() + "/home/.local/share", ::getuid()}; }
    std::string volume(const std::string& below = {}) const { return disk.path() + "/volume" + below; }
    std::string own() const { return volume("/.Trash-" + std::to_string(::getuid())); }

    static void require(bool holds, const std::string& what) {
        if (!holds) {
            std::fprintf(stderr, "%s\n", what.c_str());
            std::_Exit(1);
        }
    }
    static std::string contentOf(const fs::path& path) {
        std::ifstream stream(path);
        std::stringstream text;
        text << stream.rdbuf();
        return text.str();
    }
    void write(const std::string& below, const std::string& text) const {
        fs::create_directories(fs::path(volume(below)).parent_path());
        std::ofstream(volume(below)) << text;
    }
    // Mounts the volume in a world of this process and leaves with 0 when the body came to its end.
    void inOwnWorld(const std::function<void(Trash&)>& body) const {
        mountOwnVolume(volume());
        StepTaskRunner runner;
        ManualClock clock(runner);
        FreedesktopTrash trash(places(), clock);
        body(trash);
        std::_Exit(0);
    }

    TemporaryFolder disk;
};

TEST_F(VolumeTrash, AnItemGoesToTheTrashAtTheTopOfItsOwnVolume) {
    EXPECT_EXIT(
        inOwnWorld([&](Trash& trash) {
            write("/deep/a b.txt", "text");
            const auto landed = trash.moveToTrash(FileURL(volume("/deep/a b.txt")));
            require(landed.ok() && landed->has_value(), "the move failed");
            require((*landed)->path() == own() + "/files/a b.txt", (*landed)->path());
            require(contentOf((*landed)->path()) == "text", "the content is another");
            require(TrashInfo::originalPath(contentOf(own() + "/info/a b.txt.trashinfo")) == "deep/a b.txt",
                    "the record's path is not below the top");
            struct stat status = {};
            require(::stat(own().c_str(), &status) == 0 && (status.st_mode & 0777) == 0700,
                    "others may look into the Trash");
            require(!fs::exists(disk.path() + "/home/.local/share/Trash/files/a b.txt"), "it was copied");
        }),
        testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, WhatIsPutBackFromAVolumeLeavesNoRecord) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && landed->has_value(), "the move failed");
                    require(trash.moveOut(**landed, FileURL(volume("/a"))).ok(), "it did not come back");
                    require(contentOf(volume("/a")) == "text", "the content is another");
                    require(fs::is_empty(own() + "/info") && fs::is_empty(own() + "/files"),
                            "something was left");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, ARecordOfAVolumeTellsAnItemFromOneThatTookItsName) {
    for (const bool isShared : {false, true}) {
        EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                        if (isShared) {
                            fs::create_directories(volume("/.Trash"));
                            require(::chmod(volume("/.Trash").c_str(), 01777) == 0, "chmod");
                        }
                        write("/deep/a", "text");
                        const auto landed = trash.moveToTrash(FileURL(volume("/deep/a")));
                        require(landed.ok() && landed->has_value(), "the move failed");
                        const auto cameFrom = [&](const std::string& below) {
                            return trash.cameFrom(**landed, FileURL(volume(below))).valueOr(false);
                        };
                        require(cameFrom("/deep/a"), "it is not from its own place");
                        require(!cameFrom("/a") && !cameFrom("/other/a"), "it is from another place");
                    }),
                    testing::ExitedWithCode(0), "")
            << isShared;
    }
}

TEST_F(VolumeTrash, ASharedTrashWithTheStickyBitIsUsed) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    fs::create_directories(volume("/.Trash"));
                    require(::chmod(volume("/.Trash").c_str(), 01777) == 0, "chmod");
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && landed->has_value(), "the move failed");
                    require((*landed)->path() == volume("/.Trash/" + std::to_string(::getuid()) + "/files/a"),
                            (*landed)->path());
                    require(trash.moveOut(**landed, FileURL(volume("/a"))).ok(), "it did not come back");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, ASharedTrashWithoutTheStickyBitIsNotTrusted) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    fs::create_directories(volume("/.Trash"));
                    require(::chmod(volume("/.Trash").c_str(), 0777) == 0, "chmod");
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && (*landed)->path() == own() + "/files/a", "it went elsewhere");
                    require(fs::is_empty(volume("/.Trash")), "the shared folder was used");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, ASharedTrashThatIsALinkIsNotFollowed) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    fs::create_directories(volume("/elsewhere"));
                    require(::chmod(volume("/elsewhere").c_str(), 01777) == 0, "chmod");
                    fs::create_directory_symlink("elsewhere", volume("/.Trash"));
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && (*landed)->path() == own() + "/files/a", "it went elsewhere");
                    require(fs::is_empty(volume("/elsewhere")), "the link was followed");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, AVolumeThatCanHaveNoTrashLeavesTheItemWhereItIs) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    std::ofstream(own()) << "a file in the place of the Trash";
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(!landed.ok(), "it moved");
                    require(landed.error().code == ErrorCode::kFeatureUnsupported, "another error");
                    require(contentOf(volume("/a")) == "text", "it is gone");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, AReadOnlyVolumeLeavesTheItemWhereItIs) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    require(::mount(nullptr, volume().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0,
                            "not remounted");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(!landed.ok(), "it moved");
                    require(landed.error().code == ErrorCode::kWriteReadOnlyVolume, "another error");
                    require(contentOf(volume("/a")) == "text", "it is gone");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, AVolumeWithNoRoomForATrashSaysSo) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    require(::mount(nullptr, volume().c_str(), nullptr, MS_REMOUNT, "nr_inodes=2") == 0,
                            "not remounted");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(!landed.ok(), "it moved");
                    require(landed.error().code == ErrorCode::kWriteNoSpace, "another error");
                    require(contentOf(volume("/a")) == "text", "it is gone");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, BehindALinkToAnotherVolumeTheTrashIsAtTheTopOfThatVolume) {
    EXPECT_EXIT(
        inOwnWorld([&](Trash& trash) {
            write("/big/Caches/foo", "text");
            const std::string link = disk.path() + "/home/Caches";
            fs::create_directory_symlink(volume("/big/Caches"), link);
            const auto landed = trash.moveToTrash(FileURL(link + "/foo"));
            require(landed.ok() && landed->has_value(), "the move failed");
            require((*landed)->path() == own() + "/files/foo", (*landed)->path());
            require(TrashInfo::originalPath(contentOf(own() + "/info/foo.trashinfo")) == "big/Caches/foo",
                    "the record leads elsewhere");
            require(fs::is_empty(volume("/big/Caches")), "something was made among the caches");
            require(trash.cameFrom(**landed, FileURL(link + "/foo")).valueOr(false), "not from there");
            require(trash.moveOut(**landed, FileURL(link + "/foo")).ok(), "it did not come back");
            require(contentOf(volume("/big/Caches/foo")) == "text", "the content is another");
        }),
        testing::ExitedWithCode(0), "");
}

// One file system that is mounted twice has one device, and nothing can be moved from one mount to the other.
TEST_F(VolumeTrash, AnItemThatCannotReachTheHomeTrashGoesToTheTrashOfItsOwnMount) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    fs::create_directories(volume("/home"));
                    require(::mount(volume("/home").c_str(), (disk.path() + "/home").c_str(), nullptr,
                                    MS_BIND, nullptr) == 0,
                            "no second mount");
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && landed->has_value(), "the move failed");
                    require((*landed)->path() == own() + "/files/a", (*landed)->path());
                    require(fs::is_empty(disk.path() + "/home/.local/share/Trash/info"), "a record was left");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, ATrashOfTheVolumeThatIsALinkIsNeverFilledOrTakenFrom) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    write("/elsewhere/files/precious", "kept");
                    fs::create_directories(volume("/elsewhere/info"));
                    fs::create_directory_symlink("elsewhere", own());
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(!landed.ok(), "it moved");
                    require(landed.error().code == ErrorCode::kFeatureUnsupported, "another error");
                    require(!trash.moveOut(FileURL(own() + "/files/precious"), FileURL(volume("/b"))).ok(),
                            "it was taken");
                    require(contentOf(volume("/elsewhere/files/precious")) == "kept", "it is gone");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, AUsersFolderInTheSharedTrashThatIsALinkIsNotFollowed) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    const auto shared = volume("/.Trash/" + std::to_string(::getuid()));
                    write("/a", "text");
                    write("/elsewhere/files/precious", "kept");
                    fs::create_directories(volume("/.Trash"));
                    require(::chmod(volume("/.Trash").c_str(), 01777) == 0, "chmod");
                    fs::create_directory_symlink("../elsewhere", shared);
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(landed.ok() && (*landed)->path() == own() + "/files/a", "it went elsewhere");
                    require(!trash.moveOut(FileURL(shared + "/files/precious"), FileURL(volume("/b"))).ok(),
                            "it was taken");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, ASharedTrashThatIsALinkIsNotTakenFrom) {
    EXPECT_EXIT(
        inOwnWorld([&](Trash& trash) {
            const std::string user = std::to_string(::getuid());
            write("/elsewhere/" + user + "/files/precious", "kept");
            fs::create_directory_symlink("elsewhere", volume("/.Trash"));
            require(
                !trash.moveOut(FileURL(volume("/.Trash/" + user + "/files/precious")), FileURL(volume("/b")))
                     .ok(),
                "it was taken");
        }),
        testing::ExitedWithCode(0), "");
}

// Somebody else may have made a folder of that name first, to read what comes in.
TEST_F(VolumeTrash, ATrashThatBelongsToSomebodyElseIsNotUsed) {
    EXPECT_EXIT(inOwnWorld([&](Trash&) {
                    StepTaskRunner runner;
                    ManualClock clock(runner);
                    FreedesktopTrash trash({places().dataHome, ::getuid() + 1}, clock);
                    write("/a", "text");
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    require(!landed.ok(), "it moved");
                    require(landed.error().code == ErrorCode::kFeatureUnsupported, "another error");
                    require(contentOf(volume("/a")) == "text", "it is gone");
                }),
                testing::ExitedWithCode(0), "");
}

// A volume on the test's own one, so that no Trash is made on the machine's.
TEST_F(VolumeTrash, TheTopOfAVolumeCannotBeTrashed) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    fs::create_directories(volume("/inner"));
                    require(::mount("inner", volume("/inner").c_str(), "tmpfs", 0, "size=1m") == 0,
                            "no second volume");
                    write("/inner/a", "text");
                    require(!trash.moveToTrash(FileURL(volume("/inner"))).ok(), "the volume itself moved");
                    require(contentOf(volume("/inner/a")) == "text", "it is gone");
                    require(fs::is_empty(own() + "/info"), "a record was left");
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(VolumeTrash, AFullVolumeLosesNothing) {
    EXPECT_EXIT(inOwnWorld([&](Trash& trash) {
                    write("/a", "text");
                    {
                        std::ofstream filler(volume("/filler"));
                        const std::string block(65536, 'x');
                        while (
                            filler.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
                        }
                    }
                    const auto landed = trash.moveToTrash(FileURL(volume("/a")));
                    const auto there = landed.ok() ? (*landed)->path() : volume("/a");
                    require(contentOf(there) == "text", "it is neither here nor there");
                }),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quillane
