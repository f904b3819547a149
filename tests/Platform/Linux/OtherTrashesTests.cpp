// Where a Mac keeps what was trashed beside the home folder's Trash. What needs a volume runs in a process of its own,
// which mounts one that nobody else sees.
#include "OtherTrashes.h"
#include "OwnVolume.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

struct OtherTrashesTest : testing::Test {
    OtherTrashesTest() { testing::FLAGS_gtest_death_test_style = "fast"; }

    // 0 when it is opened, else the error.
    int errorOf(const FileURL& folder) const {
        const auto opened = OtherTrashes::open(folder, home, ::getuid());
        return opened.ok() ? 0 : opened.error().underlying.value_or(-1);
    }
    int errorOf(const std::string& below) const { return errorOf(disk.url(below)); }

    // The body says, in a world of its own, whether all is as it should be.
    void inOwnWorld(const std::function<bool()>& body) {
        disk.folder("volume");
        EXPECT_EXIT(
            {
                mountOwnVolume(disk.at("volume"));
                std::_Exit(body() ? 0 : 1);
            },
            testing::ExitedWithCode(0), "");
    }

    TemporaryFolder disk;
    FileURL home = disk.url("home");
    std::string user = std::to_string(::getuid());
};

TEST_F(OtherTrashesTest, TheUsersFolderInTheTrashesOfAVolumeIsOne) {
    inOwnWorld([&] {
        disk.folder("volume/.Trashes/" + user);
        return errorOf("volume/.Trashes/" + user) == 0;
    });
}

// As the system makes them: everybody may go through, and nobody look into it.
TEST_F(OtherTrashesTest, TheFolderOfAllUsersNeedNotBeOneThatCanBeListed) {
    inOwnWorld([&] {
        disk.folder("volume/.Trashes/65534");
        return ::chmod(disk.at("volume/.Trashes").c_str(), 01333) == 0 &&
               ::chmod(disk.at("").c_str(), 0755) == 0 &&
               ::chown(disk.at("volume/.Trashes/65534").c_str(), 65534, 65534) == 0 && ::setuid(65534) == 0 &&
               OtherTrashes::open(disk.url("volume/.Trashes/65534"), home, 65534).ok();
    });
}

TEST_F(OtherTrashesTest, NoOtherFolderOfAVolumeIsOne) {
    inOwnWorld([&] {
        disk.folder("volume/.Trashes/" + user + "/below")
            .folder("volume/.Trashes/4711")
            .folder("volume/" + user);
        disk.folder("volume/deep/.Trashes/" + user).folder("volume/.Trash/" + user).folder("volume/.Trash");
        for (const auto& folder : {".Trashes", ".Trashes/4711", "deep/.Trashes/USER", ".Trashes/USER/below",
                                   "USER", ".Trash/USER", ".Trash", "", ".Trashes/USER/..", ".Trashes/.."}) {
            std::string name = folder;
            if (const auto at = name.find("USER"); at != std::string::npos) {
                name.replace(at, 4, user);
            }
            if (errorOf("volume/" + name) != EINVAL) {
                std::fprintf(stderr, "%s\n", name.c_str());
                return false;
            }
        }
        return true;
    });
}

TEST_F(OtherTrashesTest, AFolderOfAnotherUsersIsRefused) {
    inOwnWorld([&] {
        disk.folder("volume/.Trashes/" + user);
        return ::chown(disk.at("volume/.Trashes/" + user).c_str(), 4711, 4711) == 0 &&
               errorOf("volume/.Trashes/" + user) == EINVAL;
    });
}

TEST_F(OtherTrashesTest, LinksInThePlaceOfATrashLeadNowhere) {
    inOwnWorld([&] {
        disk.folder("volume/elsewhere/" + user).folder("volume/real");
        disk.link("volume/.Trashes", "elsewhere");
        const bool above = errorOf("volume/.Trashes/" + user) == EINVAL;
        disk.remove("volume/.Trashes").folder("volume/.Trashes").link("volume/.Trashes/" + user, "../real");
        return above && errorOf("volume/.Trashes/" + user) == ENOTDIR;
    });
}

TEST_F(OtherTrashesTest, WhatIsNoVolumeHasNone) {
    disk.folder("folder/.Trashes/" + user);
    EXPECT_EQ(errorOf("folder/.Trashes/" + user), EINVAL);
    EXPECT_EQ(errorOf("missing/.Trashes/" + user), ENOENT);
}

TEST_F(OtherTrashesTest, TheTrashOfACloudIsOneWhereTheSystemShowsClouds) {
    for (const char* folder :
         {"home/Library/Mobile Documents/.Trash", "home/Library/Mobile Documents/a~b/.Trash",
          "home/Library/CloudStorage/Some Cloud/.Trash"}) {
        disk.folder(folder);
        EXPECT_EQ(errorOf(folder), 0) << folder;
    }
}

TEST_F(OtherTrashesTest, WhatOnlyLooksLikeTheTrashOfACloudIsNone) {
    disk.folder("home/Documents/.Trash").folder("home/Library/Mobile Documents/Trash");
    disk.folder("home/Library/Mobile Documents/x").folder("home/Library/Mobile Documents.old/.Trash");
    disk.folder("Library/Mobile Documents/.Trash");
    for (const char* folder :
         {"home/Documents/.Trash", "home/Library/Mobile Documents/Trash", "home/Library/Mobile Documents",
          "home/Library/Mobile Documents.old/.Trash", "Library/Mobile Documents/.Trash",
          "home/Library/Mobile Documents/../../Documents/.Trash",
          "home/Library/Mobile Documents/x/../.Trash"}) {
        EXPECT_EQ(errorOf(folder), EINVAL) << folder;
    }
    const auto nul = disk.at("home/Library/Mobile Documents/.Trash") + std::string("\0/.Trash", 8);
    EXPECT_EQ(errorOf(FileURL(nul)), EINVAL);
}

TEST_F(OtherTrashesTest, ALinkInThePlaceOfTheTrashOfACloudIsRefused) {
    disk.folder("home/Documents").folder("home/Library/Mobile Documents");
    disk.link("home/Library/Mobile Documents/.Trash", "../../Documents");
    EXPECT_EQ(errorOf("home/Library/Mobile Documents/.Trash"), ENOTDIR);
}

} // namespace
} // namespace quillane
