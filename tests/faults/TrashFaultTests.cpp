// Other programs act while something goes to the Trash or out of it.
#include "FreedesktopTrash.h"
#include "ManualClock.h"
#include "OwnVolume.h"
#include "StepTaskRunner.h"
#include "SystemCalls.h"
#include "TemporaryFolder.h"
#include <cerrno>
#include <cstdlib>
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

// Another program took its time between its record and its item.
TEST_F(TrashFaults, ARecordWhoseItemArrivesWhileStraysAreLookedForIsKept) {
    disk.file("home/last");
    const auto last = trash.moveToTrash(disk.url("home/last"));
    ASSERT_TRUE(last.ok());
    const std::string bin = "home/.local/share/Trash/";
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

} // namespace
} // namespace quillane
