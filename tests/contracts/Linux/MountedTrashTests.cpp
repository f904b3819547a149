// Folders of the Trash in which something else is mounted. Each test runs in a process of its own, whose mounts
// nobody else sees.
#include "FolderTrash.h"
#include "FreedesktopTrash.h"
#include "ManualClock.h"
#include "OwnVolume.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct PlainTrash {
    static std::unique_ptr<Trash> make(const TemporaryFolder& disk, const Clock&) {
        return std::make_unique<FolderTrash>(disk.path(), FileURL("/home"));
    }
    static std::string folder() { return "home/.Trash"; }
    static FileURL url(const TemporaryFolder&, const std::string& below) { return FileURL("/" + below); }
};

struct DesktopTrash {
    static std::unique_ptr<Trash> make(const TemporaryFolder& disk, const Clock& clock) {
        return std::make_unique<FreedesktopTrash>(
            FreedesktopTrash::Places{disk.at("home/.local/share"), ::getuid()}, clock);
    }
    static std::string folder() { return "home/.local/share/Trash/files"; }
    static FileURL url(const TemporaryFolder& disk, const std::string& below) { return disk.url(below); }
};

// An item with a file and a folder, and a file elsewhere on the same volume.
template <class Kind>
struct MountedTrash : testing::Test {
    MountedTrash() {
        testing::FLAGS_gtest_death_test_style = "fast";
        disk.file(item("aside"), "aside").folder(item("below/mount")).folder("volume");
        disk.file("precious/kept", "kept");
    }
    static std::string item(const std::string& below = {}) {
        return Kind::folder() + "/item" + (below.empty() ? "" : "/" + below);
    }
    bool isThere(const std::string& below) const { return fs::exists(fs::symlink_status(disk.at(below))); }

    static void require(bool holds, const std::string& what) {
        if (!holds) {
            std::fprintf(stderr, "%s\n", what.c_str());
            std::_Exit(1);
        }
    }
    void mountVolume(const std::string& below) const {
        require(::mount("volume", disk.at(below).c_str(), "tmpfs", 0, "size=1m") == 0, "no volume");
    }
    // The same folder, or the same file, at a second place.
    void bind(const std::string& from, const std::string& to) const {
        require(::mount(disk.at(from).c_str(), disk.at(to).c_str(), nullptr, MS_BIND, nullptr) == 0,
                "no second mount");
    }
    Result<> remove(const std::string& name = "item") {
        return trash->deleteItem(Kind::url(disk, Kind::folder() + "/" + name));
    }
    // Deletes the item, which must fail and leave all of it.
    void requireKeptWhole(const std::string& inTheMount) {
        const auto removed = remove();
        require(!removed.ok(), "it was told as deleted");
        require(removed.error() == PlatformError{ErrorCode::kWriteUnknown, EXDEV}, "another error");
        require(isThere(inTheMount), "what is mounted was deleted");
        require(isThere(item("aside")), "a part of the item was deleted");
    }
    // Runs the body in a world of mounts of its own, with a Trash that was opened there.
    void inOwnWorld(const std::function<void()>& body) {
        mountOwnVolume(disk.at("volume"));
        trash = Kind::make(disk, clock);
        body();
        std::_Exit(0);
    }

    TemporaryFolder disk;
    StepTaskRunner runner;
    ManualClock clock{runner};
    std::unique_ptr<Trash> trash;
};

using Kinds = testing::Types<PlainTrash, DesktopTrash>;
TYPED_TEST_SUITE(MountedTrash, Kinds);

TYPED_TEST(MountedTrash, AVolumeInsideAnItemStaysAndTheItemWithIt) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->mountVolume(this->item("below/mount"));
        this->disk.file(this->item("below/mount/kept"));
        this->requireKeptWhole(this->item("below/mount/kept"));
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, AFolderOfTheSameVolumeThatIsMountedInsideAnItemStaysAndTheItemWithIt) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->bind("precious", this->item("below/mount"));
        this->requireKeptWhole("precious/kept");
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, AFileThatIsMountedOnAFileInsideAnItemStaysAndTheItemWithIt) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->disk.file(this->item("below/file"));
        this->bind("precious/kept", this->item("below/file"));
        this->requireKeptWhole("precious/kept");
        this->require(this->isThere(this->item("below/file")), "the file below the mount was deleted");
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, AnItemThatIsItselfAVolumeStaysWhole) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->mountVolume(this->item());
        this->disk.file(this->item("aside"));
        this->requireKeptWhole(this->item("aside"));
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, AnItemThatIsItselfAMountedFolderOfTheSameVolumeStaysWhole) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->disk.file("precious/aside");
        this->bind("precious", this->item());
        this->requireKeptWhole("precious/kept");
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, OddNamesAboveAMountHideItFromNobody) {
    for (const std::string name : {"a blank", "back\\040slash", "line\nfeed", "tab\there", "\xff", "é"}) {
        this->disk.folder(this->item(name));
        EXPECT_EXIT(this->inOwnWorld([&] {
            this->bind("precious", this->item(name));
            this->requireKeptWhole("precious/kept");
        }),
                    testing::ExitedWithCode(0), "")
            << name;
    }
}

TYPED_TEST(MountedTrash, AMountInAnotherItemHoldsNothingUp) {
    this->disk.folder(this->item() + " 2/mount");
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->bind("precious", this->item() + " 2/mount");
        this->require(this->remove().ok(), "it was not deleted");
        this->require(!this->isThere(this->item()), "it is still there");
        this->require(!this->remove("item 2").ok(), "the other one was told as deleted");
        this->require(this->isThere("precious/kept"), "what is mounted was deleted");
    }),
                testing::ExitedWithCode(0), "");
}

// The folder of the Trash may well be one: deleting stays on it.
TYPED_TEST(MountedTrash, ATrashThatIsAVolumeOfItsOwnIsEmptied) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->mountVolume(TypeParam::folder());
        this->disk.file(this->item("below/file"));
        this->require(this->remove().ok(), "it was not deleted");
        this->require(!this->isThere(this->item()), "it is still there");
    }),
                testing::ExitedWithCode(0), "");
}

TYPED_TEST(MountedTrash, OnceNothingIsMountedInItAnItemIsDeleted) {
    EXPECT_EXIT(this->inOwnWorld([&] {
        this->bind("precious", this->item("below/mount"));
        this->requireKeptWhole("precious/kept");
        this->require(::umount(this->disk.at(this->item("below/mount")).c_str()) == 0, "not unmounted");
        this->require(this->remove().ok(), "it was not deleted");
        this->require(!this->isThere(this->item()) && this->isThere("precious/kept"), "the wrong one went");
    }),
                testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace quillane
