// The system's own Trash, on a volume that comes and goes with the test: nothing of the user's is touched.
#include "FoundationTrash.h"
#include "StandIns.h"
#include "TemporaryFolder.h"
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration): not every system declares it

namespace quillane {
namespace {

namespace fs = std::filesystem;

// Whether the system's program for disk images did what it was told.
bool imageTool(std::vector<std::string> words) {
    words.insert(words.begin(), "/usr/bin/hdiutil");
    words.emplace_back("-quiet");
    std::vector<char*> arguments;
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    pid_t process = -1;
    int status = 1;
    return ::posix_spawn(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) == 0 &&
           ::waitpid(process, &status, 0) == process && status == 0;
}

struct DiskImageTrash : testing::Test {
    DiskImageTrash() {
        StandIns::answerTrash({}); // the system answers itself
        disk.folder("volume").folder("home");
        EXPECT_TRUE(imageTool(
            {"create", disk.at("image.dmg"), "-size", "16m", "-fs", "HFS+", "-volname", "Quillane"}));
        isAttached =
            imageTool({"attach", disk.at("image.dmg"), "-mountpoint", disk.at("volume"), "-noautoopen"});
        EXPECT_TRUE(isAttached);
    }
    ~DiskImageTrash() override {
        EXPECT_TRUE(!isAttached || imageTool({"detach", disk.at("volume"), "-force"}));
    }

    TemporaryFolder disk;
    bool isAttached = false;
    FoundationTrash trash{disk.url("home")};
};

TEST_F(DiskImageTrash, AnItemGoesToTheTrashOfItsVolumeAndComesBackFromThere) {
    ASSERT_TRUE(isAttached);
    disk.file("volume/folder/a; b.txt", "text");
    const auto item = disk.url("volume/folder/a; b.txt");
    const auto landed = trash.moveToTrash(item);
    ASSERT_TRUE(landed.ok()) << landed.error().code << " " << landed.error().underlying.value_or(0);
    const auto& place = landed.value();
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->deletingLastPathComponent().path(),
              fs::canonical(disk.at("volume")).string() + "/.Trashes/" + std::to_string(::getuid()));
    EXPECT_FALSE(fs::exists(item.path()));
    EXPECT_TRUE(*trash.cameFrom(*place, item));
    ASSERT_TRUE(trash.moveOut(*place, item).ok());
    EXPECT_EQ(fs::file_size(item.path()), 4U);
    EXPECT_FALSE(trash.deleteItem(*place).ok());
}

TEST_F(DiskImageTrash, WhatIsMissingIsToldAsMissing) {
    ASSERT_TRUE(isAttached);
    const auto landed = trash.moveToTrash(disk.url("volume/missing"));
    ASSERT_FALSE(landed.ok());
    EXPECT_EQ(landed.error().code, ErrorCode::kNoSuchFileWriting);
}

} // namespace
} // namespace quillane
