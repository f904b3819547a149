// Other programs act while something goes to the Trash or out of it.
#include "FreedesktopTrash.h"
#include "ManualClock.h"
#include "OwnVolume.h"
#include "StepTaskRunner.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <utility>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct TrashFaults : testing::Test {
    TrashFaults() { testing::FLAGS_gtest_death_test_style = "fast"; }
    bool isThere(const std::string& below) const { return fs::exists(fs::symlink_status(disk.at(below))); }

    TemporaryFolder disk;
    StepTaskRunner runner;
    ManualClock clock{runner};
    FreedesktopTrash trash{{disk.at("home/.local/share"), ::getuid()}, clock};
};

// The folder that is open is one, and its path leads to another by now.
TEST_F(TrashFaults, OnAnotherVolumeAFolderThatWasSwappedMeanwhileIsNotRecordedAsTheOtherOne) {
    disk.folder("home").folder("volume").link("way", "volume/a");
    const auto item = disk.url("way/foo");
    EXPECT_EXIT(
        {
            mountOwnVolume(disk.at("volume"));
            disk.file("volume/a/foo").file("volume/b/foo");
            bool swapped = false;
            Result<std::optional<FileURL>> moved = std::optional<FileURL>();
            {
                const SystemCallWatch watch([](const SystemCall&) { return 0; },
                                            [&](const SystemCall& call, bool) {
                                                if (call.name == "open" && call.path == disk.at("way") &&
                                                    !std::exchange(swapped, true)) {
                                                    disk.remove("way").link("way", "volume/b");
                                                }
                                            });
                moved = trash.moveToTrash(item);
            }
            const bool refused = !moved.ok() && moved.error().underlying == ESTALE;
            const bool kept = isThere("volume/a/foo") && isThere("volume/b/foo");
            std::_Exit(swapped && refused && kept ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// What the user may not make there says nothing about the item, which no grant would free.
TEST_F(TrashFaults, AVolumeWhoseTopIsAnothersRefusesNoAccessToTheItem) {
    disk.folder("home").folder("volume");
    EXPECT_EXIT(
        {
            mountOwnVolume(disk.at("volume"));
            disk.file("volume/mine/a");
            const SystemCallWatch watch([](const SystemCall& call) {
                return call.name == "mkdirat" && call.path.starts_with(".Trash-") ? EACCES : 0;
            });
            const auto moved = trash.moveToTrash(disk.url("volume/mine/a"));
            const bool failed = !moved.ok() && moved.error().code == ErrorCode::kFeatureUnsupported;
            std::_Exit(failed && isThere("volume/mine/a") ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

// Another program took its time between its record and its item.
TEST_F(TrashFaults, ARecordWhoseItemArrivesWhileStraysAreLookedForIsKept) {
    disk.file("home/last");
    const auto last = trash.moveToTrash(disk.url("home/last"));
    ASSERT_TRUE(last.ok());
    const std::string bin = "home/.local/share/Trash/";
    clock.setNow(Date::fromUnix(::time(nullptr), 0).addingSeconds(2 * 3600)); // no record is young
    disk.file(bin + "info/slow.trashinfo").modified(bin + "info/slow.trashinfo", Date{0});
    {
        const SystemCallWatch watch([&](const SystemCall& call) {
            if (call.name == "fstatat" && call.path == "slow.trashinfo") {
                disk.file(bin + "files/slow");
            }
            return 0;
        });
        EXPECT_TRUE(trash.deleteItem(**last).ok());
    }
    EXPECT_TRUE(isThere(bin + "files/slow"));
    EXPECT_TRUE(isThere(bin + "info/slow.trashinfo"));
}

// Disks of other machines lose the answer to what they have done.
TEST_F(TrashFaults, AMoveThatWasMadeAndReportedAsFailedIsAMove) {
    disk.file("home/thesis");
    for (const int error : {EIO, EINTR, ENOENT, ETIMEDOUT}) {
        Result<std::optional<FileURL>> moved = std::optional<FileURL>();
        const auto answerIsLost = [&](const std::string& from, const std::string& to) {
            return [&disk = disk, from, to, error](const SystemCall& call) {
                if (call.name == "renameat2") {
                    fs::rename(disk.at(from), disk.at(to));
                    return error;
                }
                return 0;
            };
        };
        const std::string inTrash = "home/.local/share/Trash/files/thesis";
        {
            const SystemCallWatch watch(answerIsLost("home/thesis", inTrash));
            moved = trash.moveToTrash(disk.url("home/thesis"));
        }
        ASSERT_TRUE(moved.ok()) << error;
        EXPECT_TRUE(isThere(inTrash) && isThere("home/.local/share/Trash/info/thesis.trashinfo"));
        const SystemCallWatch watch(answerIsLost(inTrash, "home/thesis"));
        EXPECT_TRUE(trash.moveOut(**moved, disk.url("home/thesis")).ok()) << error;
        EXPECT_TRUE(isThere("home/thesis"));
        EXPECT_FALSE(isThere("home/.local/share/Trash/info/thesis.trashinfo"));
    }
}

// What took the name meanwhile is another file, and the item is where it was.
TEST_F(TrashFaults, AMoveThatFailedBecauseTheNameWasTakenIsNone) {
    disk.file("home/thesis", "mine");
    const SystemCallWatch watch([&](const SystemCall& call) {
        if (call.name == "renameat2") {
            disk.file("home/.local/share/Trash/files/thesis", "another");
            return EIO;
        }
        return 0;
    });
    EXPECT_FALSE(trash.moveToTrash(disk.url("home/thesis")).ok());
    EXPECT_TRUE(isThere("home/thesis"));
}

} // namespace
} // namespace quillane
