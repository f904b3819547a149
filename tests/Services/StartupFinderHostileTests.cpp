// Folders of launchd's and a launchctl that mean harm, on the real adapters.
#include "OddNames.h"
#include "PosixCommandRunner.h"
#include "PropertyListWriter.h"
#include "RemovalWorld.h"
#include "StartupFinder.h"
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sys/stat.h>
#include <thread>

namespace quillane {
namespace {

namespace fs = std::filesystem;

const std::string kAgents = "Users/alex/Library/LaunchAgents/";

Plist usualJob(const std::string& label) {
    return Plist::dictionary({{"Label", label},
                              {"ProgramArguments", Plist::array({"/opt/tool", "--quiet"})},
                              {"KeepAlive", Plist::dictionary({{"SuccessfulExit", false}})},
                              {"RunAtLoad", true},
                              {"StartInterval", 3'600}});
}

class HostileLists : public testing::Test {
  protected:
    void lay(const std::string& content) {
        world.disk.file(kAgents + "hostile-" + std::to_string(m_count++) + ".plist", content);
    }
    // What the reader of property lists has had trouble with, or could have.
    void layCorpus() {
        for (const auto& entry : fs::directory_iterator(QUILLANE_FUZZ_CORPUS "/property-list")) {
            std::ifstream file(entry.path(), std::ios::binary);
            lay({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
        }
    }
    // This list, cut off or with one byte turned over, evenly spread, until there are so many.
    void layDamagedUpTo(int count, const std::string& whole) {
        const auto from = m_count;
        while (m_count < count) {
            const auto at = whole.size() * static_cast<std::size_t>(m_count - from) /
                            static_cast<std::size_t>(count - from);
            auto damaged = whole;
            damaged[at] = static_cast<char>(~damaged[at]);
            lay(m_count % 3 == 0 ? whole.substr(0, at) : damaged);
        }
    }
    // Things that are no files, under the name of a list.
    void layTraps() {
        world.disk.link(kAgents + "trap-self.plist", "trap-self.plist");
        world.disk.link(kAgents + "trap-a.plist", "trap-b.plist")
            .link(kAgents + "trap-b.plist", "trap-a.plist");
        world.disk.fifo(kAgents + "trap-pipe.plist").folder(kAgents + "trap-folder.plist");
        world.disk.link(kAgents + "trap-to-pipe.plist", "trap-pipe.plist");
        ASSERT_EQ(::mknod(world.disk.at(kAgents + "trap-socket.plist").c_str(), S_IFSOCK | 0600, 0), 0);
        constexpr dev_t kZeros = 0x105; // Linux's number of the device that never ends
        // Only root may make one.
        static_cast<void>(
            ::mknod(world.disk.at(kAgents + "trap-zeros.plist").c_str(), S_IFCHR | 0600, kZeros));
        world.disk.sparse(kAgents + "trap-sparse.plist", 16'000'000);
        world.disk.file(kAgents + "trap-large.plist",
                        xmlPropertyList(usualJob("com.example.large")) + std::string(16'000'000, '\n'));
    }

    RemovalWorld world;

  private:
    int m_count = 0;
};

TEST_F(HostileLists, FiveHundredHostileListsLeaveTheGoodOnesAsTheyAre) {
    constexpr int kHostile = 500;
    world.disk.file("opt/tool");
    layCorpus();
    const auto damaged = usualJob("com.example.damaged");
    layDamagedUpTo(kHostile * 2 / 3, xmlPropertyList(damaged));
    layDamagedUpTo(kHostile, binaryPropertyList(damaged));
    layTraps();
    world.disk.file(kAgents + "good.plist", xmlPropertyList(usualJob("com.example.good")));

    const auto items = StartupFinder::find(world.platform, {});

    const auto good = std::ranges::find(items, "com.example.good", &StartupItem::label);
    ASSERT_NE(good, items.end());
    EXPECT_EQ(good->schedule(), "at login, kept alive, every 1 hr");
    EXPECT_EQ(good->health, StartupItem::Health::orphaned);
    std::set<FileURL> told;
    for (const auto& item : items) {
        EXPECT_TRUE(told.insert(item.url).second) << item.url.path();
        EXPECT_EQ(item.url.deletingLastPathComponent(), FileURL("/Users/alex/Library/LaunchAgents"));
        EXPECT_FALSE(item.url.lastPathComponent().starts_with("trap-")) << item.url.path();
        EXPECT_NE(item.health, StartupItem::Health::ok) << item.url.path();
    }
    EXPECT_GT(items.size(), 1U) << "some of the damaged are lists all the same";
    EXPECT_EQ(items, StartupFinder::find(world.platform, {}));
}

TEST_F(HostileLists, TextsThatAreNoPathsAndNoNamesAreOnlyTold) {
    const std::vector<std::string> texts = {
        std::string("/opt/tool\0", 10),  "/opt/tool\n",        "\u202E/opt/tool", std::string(100'000, '/'),
        "/" + std::string(100'000, 'a'), "~/../../opt/tool/.."};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        world.disk.file(kAgents + std::to_string(i) + ".plist",
                        binaryPropertyList(Plist::dictionary({{"Label", texts[i]}, {"Program", texts[i]}})));
    }
    for (const auto& item : StartupFinder::find(world.platform, {})) {
        EXPECT_EQ(item.program, item.label);
        EXPECT_EQ(item.health,
                  item.program == texts[3] ? StartupItem::Health::orphaned : StartupItem::Health::broken)
            << item.url.path();
    }
    EXPECT_EQ(StartupFinder::find(world.platform, {}).size(), texts.size());
}

TEST_F(HostileLists, NamesOfFilesMayBeAnyBytes) {
    const std::set<std::string> names{"line\nfeed", std::string(OddNames::kOne) + OddNames::kOther,
                                      "\u202Etsilp", " ", "a.plist"};
    for (const auto& name : names) {
        world.disk.file(kAgents + name + ".plist", xmlPropertyList(Plist::dictionary({})));
    }
    std::set<std::string> labels;
    for (const auto& item : StartupFinder::find(world.platform, {})) {
        labels.insert(item.label);
    }
    EXPECT_EQ(labels, names);
}

// Whatever is run is this script, as a process of its own.
class ScriptRunner final : public CommandRunner {
  public:
    explicit ScriptRunner(std::vector<std::string> script)
        : m_script(std::move(script)) {
        m_script.insert(m_script.begin(), "-c");
    }
    std::uint32_t userID() const override { return 501; }

  protected:
    Result<std::string> outputOf(const Run& run) override {
        return m_real.run("/bin/sh", m_script, run.stop, run.mostBytes, run.errors);
    }

  private:
    std::vector<std::string> m_script;
    PosixCommandRunner m_real;
};

class HostileLaunchctl : public testing::Test {
  protected:
    HostileLaunchctl() {
        world.disk.file(kAgents + "good.plist", xmlPropertyList(usualJob("com.example.good")));
        world.disk.fifo("begun").fifo("never");
    }
    Platform platformOf(ScriptRunner& launchctl) const {
        return {world.platform.files,    launchctl,
                world.platform.metadata, world.platform.clock,
                world.platform.tasks,    world.platform.workspace,
                world.platform.trash,    world.platform.runningApplications,
                world.platform.defaults};
    }
    // Says that it has begun and never returns.
    ScriptRunner endless() const {
        return ScriptRunner(
            {R"(echo half; : > "$1"; exec cat "$2")", "sh", world.disk.at("begun"), world.disk.at("never")});
    }
    // Runs `work`, and asks it to stop as soon as launchctl has begun.
    template <class Work>
    void stopOnceBegun(Work work) const {
        const StopSource source;
        std::thread stopper([&] {
            const std::ifstream begun(world.disk.at("begun"));
            source.requestStop();
        });
        work(source.token());
        stopper.join();
    }
    static StartupItem ownAgent() {
        StartupItem item;
        item.url = FileURL("/" + kAgents + "good.plist");
        item.label = "com.example.good";
        return item;
    }

    RemovalWorld world;
};

TEST_F(HostileLaunchctl, OneThatNeverReturnsIsEndedWhenNobodyWaitsForTheListAnyMore) {
    auto launchctl = endless();
    const auto platform = platformOf(launchctl);
    stopOnceBegun([&](const StopToken& stop) {
        EXPECT_TRUE(StartupFinder::find(platform, {}, stop).empty());
        EXPECT_TRUE(stop.stopRequested());
    });
}

TEST_F(HostileLaunchctl, OneThatNeverReturnsIsEndedWhenNobodyWaitsForItsAnswerAnyMore) {
    auto launchctl = endless();
    const auto platform = platformOf(launchctl);
    stopOnceBegun([&](const StopToken& stop) {
        static_cast<void>(StartupFinder::unload(platform, ownAgent(), stop));
        EXPECT_TRUE(stop.stopRequested());
    });
}

TEST_F(HostileLaunchctl, OneThatPrintsWithoutEndIsEndedAtTheBound) {
    ScriptRunner launchctl({"while :; do head -c 1000000 /dev/zero; done"});
    const auto platform = platformOf(launchctl);
    const auto items = StartupFinder::find(platform, {});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].isLoaded, false);
    EXPECT_EQ(StartupFinder::unload(platform, ownAgent()), "launchctl gave no answer that could be read.");
}

TEST_F(HostileLaunchctl, OneThatDiesInTheMiddleOfALineHasSaidTheRest) {
    ScriptRunner launchctl(
        {R"(printf 'PID\tStatus\tLabel\n-\t0\tcom.example.good\n-\t0\tcom.ex'; kill -9 $$)"});
    const auto items = StartupFinder::find(platformOf(launchctl), {});
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].isLoaded, true);
}

TEST_F(HostileLaunchctl, WhatItPrintsToEitherOutputIsTheMessageAndItsStatusIsNone) {
    ScriptRunner refusing({"echo 'Boot-out failed: 5: Input/output error' >&2; exit 5"});
    EXPECT_EQ(StartupFinder::unload(platformOf(refusing), ownAgent()),
              "Boot-out failed: 5: Input/output error");
    ScriptRunner silent({"exit 5"});
    EXPECT_EQ(StartupFinder::unload(platformOf(silent), ownAgent()), std::nullopt);
}

} // namespace
} // namespace quillane
