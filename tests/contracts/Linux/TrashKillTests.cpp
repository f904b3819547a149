// A process that is killed at any moment of a move loses nothing: each file is in its old place or in the
// Trash, whole.
#include "FolderTrash.h"
#include "FreedesktopTrash.h"
#include "ManualClock.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 12;
constexpr int kRounds = 200;

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::stringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string nameOf(int i) {
    return "file " + std::to_string(i) + ".txt";
}

std::string textOf(int i) {
    return std::string(static_cast<std::size_t>(5000 + i), static_cast<char>('a' + i));
}

struct Ground {
    TemporaryFolder disk;
    StepTaskRunner runner;
    ManualClock clock{runner};

    Ground() {
        for (int i = 0; i < kFiles; ++i) {
            disk.file("home/" + nameOf(i), textOf(i));
        }
    }
};

struct PlainKind {
    static std::unique_ptr<Trash> make(const Ground& ground) {
        return std::make_unique<FolderTrash>(ground.disk.path(), FileURL("/home"));
    }
    static FileURL url(const Ground&, const std::string& name) { return FileURL("/home/" + name); }
    static fs::path folder(const Ground& ground) { return ground.disk.path() + "/home/.Trash"; }
};

struct DesktopKind {
    static std::unique_ptr<Trash> make(const Ground& ground) {
        return std::make_unique<FreedesktopTrash>(
            FreedesktopTrash::Places{ground.disk.path() + "/home/.local/share", ::getuid()}, ground.clock);
    }
    static FileURL url(const Ground& ground, const std::string& name) {
        return FileURL(ground.disk.path() + "/home/" + name);
    }
    static fs::path folder(const Ground& ground) {
        return ground.disk.path() + "/home/.local/share/Trash/files";
    }
};

template <class Kind>
struct TrashKill : testing::Test {
    // Moves everything to the Trash and back for ever.
    [[noreturn]] void moveForEver() {
        const auto trash = Kind::make(ground);
        for (;;) {
            std::map<int, FileURL> landed;
            for (int i = 0; i < kFiles; ++i) {
                if (auto moved = trash->moveToTrash(Kind::url(ground, nameOf(i))); moved && *moved) {
                    landed.emplace(i, **moved);
                }
            }
            for (const auto& [i, inTrash] : landed) {
                (void)trash->moveOut(inTrash, Kind::url(ground, nameOf(i)));
            }
            if (landed.empty()) { // what an earlier process left in the Trash
                const auto items = trash->items();
                for (const auto& item : *items) {
                    (void)trash->moveOut(item, Kind::url(ground, std::string(item.lastPathComponent())));
                }
            }
        }
    }
    // How often each file's content is found, at home and in the Trash together.
    std::map<std::string, int> found() const {
        std::map<std::string, int> contents;
        for (const fs::path& folder : {fs::path(ground.disk.path() + "/home"), Kind::folder(ground)}) {
            std::error_code missing;
            for (const auto& entry : fs::directory_iterator(folder, missing)) {
                if (entry.is_regular_file()) {
                    ++contents[contentOf(entry.path())];
                }
            }
        }
        return contents;
    }
    Ground ground;
};

using Kinds = testing::Types<PlainKind, DesktopKind>;
TYPED_TEST_SUITE(TrashKill, Kinds);

TYPED_TEST(TrashKill, EveryFileIsInItsPlaceOrInTheTrashAndWhole) {
    std::map<std::string, int> expected;
    for (int i = 0; i < kFiles; ++i) {
        expected[textOf(i)] = 1;
    }
    for (int round = 0; round < kRounds; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            this->moveForEver();
        }
        ASSERT_GT(child, 0);
        // Work of our own lets the child come more or less far.
        for (int turn = 0; turn < round % 5; ++turn) {
            (void)this->found();
        }
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(this->found(), expected) << "round " << round;
    }
}

// The desktop's own tool lists what we trashed and restores it. (The tool of today restores names beyond ASCII
// with their bytes spelled out, so this one has none.)
TEST(FreedesktopTrashWithTheDesktop, WhatIsTrashedIsListedAndRestoredByTheDesktopsTool) {
    Ground ground;
    const auto trash = DesktopKind::make(ground);
    ground.disk.file("home/100% of \"it\".txt", "text");
    const auto url = DesktopKind::url(ground, "100% of \"it\".txt");
    ASSERT_TRUE(trash->moveToTrash(url).ok());
    const std::string home = ground.disk.path() + "/home";
    const std::string output = ground.disk.path() + "/listed";
    const std::string environment =
        "HOME='" + home + "' XDG_DATA_HOME='" + home + "/.local/share' XDG_RUNTIME_DIR='" + home + "' ";
    const std::string command = environment + "timeout 60 dbus-run-session -- sh -c 'gio trash --list > \"" +
                                output + "\"; gio trash --restore \"$(cut -f1 \"" + output +
                                "\")\"' > /dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << command; // NOLINT: a test may use a shell
    EXPECT_NE(contentOf(output).find(url.path()), std::string::npos) << contentOf(output);
    EXPECT_EQ(contentOf(url.path()), "text");
    EXPECT_TRUE(trash->items()->empty());
}

} // namespace
} // namespace quillane
