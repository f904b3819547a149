// Every call that storing a setting makes of the system fails in turn, with each error. The file holds the old
// values or the new ones, whole, and none where an old one would mislead; this process goes by what it set; nothing
// else that was stored is lost.
#include "DefaultsKeys.h"
#include "FailingCall.h"
#include "RealHome.h"
#include <algorithm>
#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

namespace fs = std::filesystem;

struct SettingsFaults : testing::Test {
    struct Ground {
        Ground() {
            FileDefaults defaults(path);
            defaults.set("other", std::string("kept"));
            defaults.set("key", std::string("old"));
        }
        // Everything that lies beside the file, but for the lock.
        std::set<std::string> leftBehind() const {
            std::set<std::string> names;
            for (const auto& entry : fs::directory_iterator(fs::path(path).parent_path())) {
                names.insert(entry.path().filename().string());
            }
            names.erase("defaults.plist");
            names.erase("defaults.plist.lock");
            return names;
        }
        std::optional<Defaults::Value> stored(std::string_view key) const {
            return FileDefaults(path).value(key);
        }

        mutable TemporaryFolder folder;
        std::string path = folder.path() + "/config/quillane/defaults.plist";
    };
    using Change = void (*)(FileDefaults&);

    static int callsOf(Change change) {
        const Ground ground;
        FileDefaults defaults(ground.path);
        const FailingCall none;
        change(defaults);
        return none.count();
    }
    // `wanted` is what the change makes of "key", `otherwise` what the file may hold instead. Returns the calls whose
    // failure had it hold that.
    std::set<std::string> failEachCall(Change change, const std::optional<Defaults::Value>& wanted,
                                       const std::optional<Defaults::Value>& otherwise) {
        const int calls = callsOf(change);
        EXPECT_GT(calls, 12);
        std::set<std::string> harmful;
        // Not ENOENT: a system that says that the file is missing is believed.
        for (const int error : {EACCES, EPERM, ENOSPC, EDQUOT, EIO, EROFS, EMFILE}) {
            for (int failing = 0; failing < calls; ++failing) {
                const Ground ground;
                FileDefaults defaults(ground.path);
                std::string what;
                std::string call;
                {
                    const FailingCall fault(failing, error);
                    change(defaults);
                    what = fault.describe(error);
                    call = fault.name;
                }
                SCOPED_TRACE(what);
                const auto stored = ground.stored("key");
                EXPECT_TRUE(stored == wanted || stored == otherwise);
                EXPECT_EQ(ground.stored("other"), kKept);
                EXPECT_EQ(defaults.value("key"), wanted);
                EXPECT_EQ(defaults.value("other"), kKept);
                EXPECT_TRUE(ground.leftBehind().empty());
                if (stored != wanted) {
                    harmful.insert(call);
                }
                defaults.set("next", true); // the disk is well again
                EXPECT_EQ(ground.stored("key"), wanted);
                EXPECT_EQ(ground.stored("other"), kKept);
                EXPECT_EQ(ground.stored("next"), Defaults::Value(true));
                if (HasFailure()) {
                    return harmful;
                }
            }
        }
        return harmful;
    }
    const std::set<std::string> kCallsOfWriting{"openat", "write", "fsync", "renameat"};

    const std::optional<Defaults::Value> kOld = std::string("old");
    const std::optional<Defaults::Value> kKept = std::string("kept");
};

TEST_F(SettingsFaults, EachCallThatFailsWhileAValueIsStoredLeavesTheOldOrTheNew) {
    const auto harmful = failEachCall([](FileDefaults& defaults) { defaults.set("key", std::string("new")); },
                                      std::string("new"), kOld);
    EXPECT_TRUE(std::ranges::includes(harmful, kCallsOfWriting));
}

TEST_F(SettingsFaults, EachCallThatFailsWhileAMisleadingValueIsReplacedLeavesTheNewOrNone) {
    const auto harmful =
        failEachCall([](FileDefaults& defaults) { defaults.setOrForget("key", std::string("new")); },
                     std::string("new"), std::nullopt);
    EXPECT_TRUE(std::ranges::includes(harmful, kCallsOfWriting));
}

TEST_F(SettingsFaults, WhicheverCallFailsAValueThatIsTakenAwayIsGoneFromTheFile) {
    const auto harmful =
        failEachCall([](FileDefaults& defaults) { defaults.clear("key"); }, std::nullopt, std::nullopt);
    EXPECT_TRUE(harmful.empty());
}

TEST_F(SettingsFaults, WhicheverCallFailsAValueThatAChangeTakesAwayIsGoneFromTheFile) {
    const auto harmful = failEachCall(
        [](FileDefaults& defaults) {
            defaults.update("key", [](const auto&) { return std::optional<Defaults::Value>(); });
        },
        std::nullopt, std::nullopt);
    EXPECT_TRUE(harmful.empty());
}

// As on a full disk without a reserve.
int refuseNewFiles(const SystemCall& call) {
    return call.name == "renameat" ? ENOSPC : 0;
}

TEST_F(SettingsFaults, WhatCannotBeTakenOutIsCrossedOutInPlaceByOneByte) {
    const Ground ground;
    auto before = everythingAt(ground.path);
    {
        const SystemCallWatch watch(refuseNewFiles);
        FileDefaults(ground.path).clear("key");
    }
    EXPECT_EQ(ground.stored("key"), std::nullopt);
    EXPECT_EQ(ground.stored("other"), kKept);
    const auto after = everythingAt(ground.path);
    ASSERT_EQ(after.size(), before.size());
    before[before.find("<key>key</key>") + 5] = '~';
    EXPECT_EQ(after, before);
}

TEST_F(SettingsFaults, WhatIsCrossedOutIsOnTheDiskBeforeAnythingElseIsDone) {
    const Ground ground;
    std::vector<std::string> calls;
    {
        const SystemCallWatch watch(refuseNewFiles,
                                    [&](const SystemCall& call, bool) { calls.emplace_back(call.name); });
        FileDefaults(ground.path).clear("key");
    }
    const auto written = std::ranges::find(calls, "pwrite");
    ASSERT_GT(std::distance(written, calls.end()), 1);
    EXPECT_EQ(written[1], "fsync");
}

TEST_F(SettingsFaults, WhatIsCrossedOutGoesWithTheNextWriting) {
    const Ground ground;
    {
        const SystemCallWatch watch(refuseNewFiles);
        FileDefaults(ground.path).clear("key");
    }
    FileDefaults(ground.path).set("next", true);
    EXPECT_EQ(everythingAt(ground.path).find('~'), std::string::npos);
    EXPECT_EQ(ground.stored("next"), Defaults::Value(true));
    EXPECT_EQ(ground.stored("other"), kKept);
}

TEST_F(SettingsFaults, AFileOfAnotherHandInWhichTheKeyStandsElsewhereTooIsNotTouched) {
    const Ground ground;
    const std::string foreign = "<plist><dict><key>a</key><dict><key>key</key><true/></dict>"
                                "<key>key</key><string>old</string></dict></plist>";
    ground.folder.remove("config/quillane/defaults.plist").file("config/quillane/defaults.plist", foreign);
    const SystemCallWatch watch(refuseNewFiles);
    FileDefaults defaults(ground.path);
    defaults.clear("key");
    EXPECT_EQ(defaults.value("key"), std::nullopt);
    EXPECT_EQ(everythingAt(ground.path), foreign);
}

// Another instance stores something just before the lock is had.
TEST_F(SettingsFaults, NothingIsReadOrWrittenBeforeTheLockIsHad) {
    const Ground ground;
    FileDefaults defaults(ground.path);
    bool locked = false;
    {
        const SystemCallWatch watch([&](const SystemCall& call) {
            if (call.name == "flock" && !std::exchange(locked, true)) {
                FileDefaults(ground.path).set("next", true);
            }
            return 0;
        });
        defaults.set("key", std::string("new"));
    }
    EXPECT_TRUE(locked);
    EXPECT_EQ(ground.stored("next"), Defaults::Value(true));
    EXPECT_EQ(ground.stored("key"), Defaults::Value(std::string("new")));
}

// A power cut takes away what was not synced: the content, and then the name.
TEST_F(SettingsFaults, TheContentIsSyncedBeforeItGetsItsNameAndTheNameAfterIt) {
    const Ground ground;
    std::vector<std::string> calls;
    {
        const SystemCallWatch watch([&](const SystemCall& call) {
            if (call.name == "fsync" || call.name == "renameat") {
                calls.emplace_back(call.name);
            }
            return 0;
        });
        FileDefaults(ground.path).set("key", std::string("new"));
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"fsync", "renameat", "fsync"}));
}

// The disk fills in the middle: a part is written, then nothing more.
TEST_F(SettingsFaults, AWriteThatStopsShortAtAFullDiskLeavesTheOldFileWhole) {
    for (const std::size_t part : {std::size_t{0}, std::size_t{1}, std::size_t{300}}) {
        const Ground ground;
        FileDefaults defaults(ground.path);
        {
            int writes = 0;
            const SystemCallWatch watch([&](const SystemCall& call) {
                if (call.length == nullptr) {
                    return 0;
                }
                *call.length = part;
                return ++writes > 1 || part == 0 ? ENOSPC : 0;
            });
            defaults.set("key", std::string(3000, 'n'));
        }
        EXPECT_EQ(ground.stored("key"), kOld);
        EXPECT_EQ(ground.stored("other"), kKept);
        EXPECT_EQ(defaults.value("key"), Defaults::Value(std::string(3000, 'n')));
        EXPECT_TRUE(ground.leftBehind().empty());
    }
}

TEST_F(SettingsFaults, AFileThatIsWrittenByteByByteIsWhole) {
    const Ground ground;
    {
        const SystemCallWatch watch([](const SystemCall& call) {
            if (call.length != nullptr) {
                *call.length = 1;
            }
            return 0;
        });
        FileDefaults(ground.path).set("key", std::string("new"));
    }
    EXPECT_EQ(ground.stored("key"), Defaults::Value(std::string("new")));
    EXPECT_EQ(ground.stored("other"), kKept);
}

// A signal is no failure.
TEST_F(SettingsFaults, AWriteThatASignalInterruptsIsMadeAgain) {
    const Ground ground;
    {
        bool interrupted = false;
        const SystemCallWatch watch([&](const SystemCall& call) {
            return call.length != nullptr && !std::exchange(interrupted, true) ? EINTR : 0;
        });
        FileDefaults(ground.path).set("key", std::string("new"));
    }
    EXPECT_EQ(ground.stored("key"), Defaults::Value(std::string("new")));
}

// What could not be tidied up is never read.
TEST_F(SettingsFaults, ATemporaryFileThatCannotBeRemovedEitherDoesNoHarm) {
    const Ground ground;
    FileDefaults defaults(ground.path);
    {
        const SystemCallWatch watch([](const SystemCall& call) {
            return call.name == "renameat" || call.name == "unlinkat" ? EIO : 0;
        });
        defaults.set("key", std::string("new"));
    }
    EXPECT_EQ(ground.leftBehind().size(), 1U);
    EXPECT_EQ(ground.stored("key"), kOld);
    defaults.set("key", std::string("newer"));
    EXPECT_EQ(ground.stored("key"), Defaults::Value(std::string("newer")));
}

// As after a start with no file descriptor to spare: the next look is another try.
TEST_F(SettingsFaults, AFileThatCouldNotBeReadIsNotTakenForEmptyLater) {
    for (const char* failing : {"stat", "open", "fstat", "read"}) {
        const Ground ground;
        const FileDefaults defaults(ground.path);
        {
            const SystemCallWatch watch(
                [failing](const SystemCall& call) { return call.name == failing ? EMFILE : 0; });
            EXPECT_EQ(defaults.value("key"), std::nullopt) << failing;
        }
        EXPECT_EQ(defaults.value("key"), kOld) << failing;
    }
}

TEST_F(SettingsFaults, WhatCouldBeReadBeforeIsStillKnownWhileTheFileCannotBeRead) {
    const Ground ground;
    const FileDefaults defaults(ground.path);
    EXPECT_EQ(defaults.value("key"), kOld);
    FileDefaults(ground.path).set("key", std::string("new"));
    const SystemCallWatch watch([](const SystemCall& call) { return call.name == "open" ? EIO : 0; });
    EXPECT_EQ(defaults.value("key"), kOld);
}

// ---- the library

// The rows of a sweep that ended, and then every call of storing its operation fails in turn.
TEST(LibrarySettingsFaults, AnOperationThatCannotBeStoredIsStillPutBackByThisProcess) {
    const auto items = std::vector<std::string>{"Downloads/link", RealHome::kDeep};
    for (int failing = 0;; ++failing) {
        const RealHome home;
        Launch<DesktopAdapters> launch(home);
        launch.library.setProtected(DesktopAdapters::url(home, RealHome::kProtected), true);
        launch.sweep(entriesFor<DesktopAdapters>(home, {"Library/Caches/com.example.a"}), "Earlier");
        // The moves are done; the job that waits now measures the Trash once the operation is stored.
        std::optional<SweepReport> report;
        launch.library.tasks().start([&](StopToken) -> Task<> {
            report = co_await launch.library.runSweep(entriesFor<DesktopAdapters>(home, items), "Sweep");
        });
        launch.runner.settle();
        launch.runner.runJob();
        launch.runner.settle();
        launch.runner.runJob();
        std::string what;
        {
            const FailingCall fault(failing, ENOSPC);
            launch.runner.settle();
            what = fault.name;
            if (fault.count() <= failing) {
                ASSERT_GT(failing, 12);
                return;
            }
        }
        launch.runner.runAll();
        SCOPED_TRACE(what);
        EXPECT_EQ(report->itemsMovedToTrash, 2);
        EXPECT_EQ((*launch.library.lastOperation)->label, "Sweep");
        {
            Launch<DesktopAdapters> next(home); // this operation or none, and protection in any case
            const auto& stored = *next.library.lastOperation;
            EXPECT_EQ(stored ? stored->label : "Sweep", "Sweep");
            EXPECT_TRUE(next.library.isProtected(DesktopAdapters::url(home, RealHome::kProtected)));
        }
        EXPECT_EQ(launch.undo().trashed.size(), 2U);
        EXPECT_TRUE(home.isHome(items[0]) && home.isHome(items[1]));
        EXPECT_FALSE(Launch<DesktopAdapters>(home).library.lastOperation->has_value());
    }
}

TEST(LibrarySettingsFaults, AnOperationThatWasPutBackIsNotOfferedAgainThoughTheFileCannotBeWrittenAnew) {
    const RealHome home;
    {
        Launch<DesktopAdapters> launch(home);
        launch.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Sweep");
        const SystemCallWatch watch(refuseNewFiles);
        EXPECT_EQ(launch.undo().trashed.size(), 1U);
    }
    EXPECT_FALSE(Launch<DesktopAdapters>(home).library.lastOperation->has_value());
}

// The next start offers it once more, and that finds nothing left to do.
TEST(LibrarySettingsFaults, AnOperationThatNothingTakesOutOfTheFileDoesNoHarmAtTheNextStart) {
    const RealHome home;
    {
        Launch<DesktopAdapters> launch(home);
        launch.sweep(entriesFor<DesktopAdapters>(home, {"Downloads/link"}), "Sweep");
        const SystemCallWatch watch([](const SystemCall& call) {
            return call.name == "renameat" || call.name == "pwrite" ? EIO : 0;
        });
        EXPECT_EQ(launch.undo().trashed.size(), 1U);
        EXPECT_FALSE(launch.library.lastOperation->has_value());
        EXPECT_FALSE(launch.ports.defaults.data(DefaultsKeys::kLastOperation));
    }
    Launch<DesktopAdapters> next(home);
    ASSERT_TRUE(next.library.lastOperation->has_value());
    const auto report = next.undo();
    ASSERT_EQ(report.failures.size(), 1U);
    EXPECT_EQ(report.failures[0].reason, "No longer in the Trash.");
    EXPECT_TRUE(home.isHome("Downloads/link"));
}

// The disk is full when a path is protected; a sweep makes room and stores what it moved.
TEST(LibrarySettingsFaults, AProtectionThatCouldNotBeStoredHoldsAndIsStoredWithTheNextChange) {
    const RealHome home;
    {
        Launch<DesktopAdapters> launch(home);
        const auto url = DesktopAdapters::url(home, RealHome::kProtected);
        {
            const SystemCallWatch watch(
                [](const SystemCall& call) { return call.length != nullptr ? ENOSPC : 0; });
            launch.library.setProtected(url, true);
        }
        launch.sweep(entriesFor<DesktopAdapters>(home, {RealHome::kProtected, "Downloads/link"}), "Sweep");
        EXPECT_TRUE(home.isHome(RealHome::kProtected));
        EXPECT_FALSE(home.isHome("Downloads/link"));
    }
    Launch<DesktopAdapters> next(home);
    EXPECT_TRUE(next.library.isProtected(DesktopAdapters::url(home, RealHome::kProtected)));
}

} // namespace
} // namespace quillane
