// The Mac's answer to whether something is mounted below an entry.
#include "Descriptor.h"
#include "Mounts.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <fcntl.h>
#include <gtest/gtest.h>

namespace quillane {
namespace {

struct MountsTest : testing::Test {
    MountsTest() { disk.folder("DISK").file("file"); }
    ~MountsTest() override { SystemCalls::answers() = {}; }

    bool isAny(const std::string& name) const { return Mounts::isAnyAtOrBelow(folder.get(), name); }
    static void mount(const std::string& path) { SystemCalls::answers().mounts = {"/", path}; }

    TemporaryFolder disk;
    Descriptor folder{::open(disk.path().c_str(), O_RDONLY | O_DIRECTORY)};
};

TEST_F(MountsTest, WhatIsMountedOnAnEntryOrBelowItIsFound) {
    EXPECT_FALSE(isAny("DISK"));
    for (const char* place : {"DISK", "DISK/inner", "DISK/a/b"}) {
        mount(disk.at(place));
        EXPECT_TRUE(isAny("DISK")) << place;
    }
    for (const char* place : {"DISKS", "DIS", "file"}) {
        mount(disk.at(place));
        EXPECT_FALSE(isAny("DISK")) << place;
    }
}

TEST_F(MountsTest, AnEntryOfTheRootIsFoundToo) {
    const Descriptor root(::open("/", O_RDONLY | O_DIRECTORY));
    for (const char* name : {"tmp", "no such folder"}) {
        mount(std::string("/") + name + "/disk");
        EXPECT_TRUE(Mounts::isAnyAtOrBelow(root.get(), name)) << name;
        EXPECT_FALSE(Mounts::isAnyAtOrBelow(root.get(), "usr"));
    }
}

// The list has the spelling that the volume keeps; the entry may be asked for in another.
TEST_F(MountsTest, AFolderIsKnownByThePathThatTheSystemTellsOfIt) {
    SystemCalls::answers().paths = {{disk.at("DISK"), "/Volumes/Disk"}};
    mount("/Volumes/Disk/inner");
    EXPECT_TRUE(isAny("DISK"));
    mount(disk.at("DISK/inner"));
    EXPECT_FALSE(isAny("DISK"));
}

TEST_F(MountsTest, TheVolumeOfAllUsersShowsTheSamePaths) {
    SystemCalls::answers().paths = {{disk.at("DISK"), "/System/Volumes/Data/Users/a"}};
    mount("/Users/a/disk");
    EXPECT_TRUE(isAny("DISK"));
    SystemCalls::answers().paths = {{disk.at("DISK"), "/Users/a"}};
    mount("/System/Volumes/Data/Users/a/disk");
    EXPECT_TRUE(isAny("DISK"));
}

} // namespace
} // namespace quillane
