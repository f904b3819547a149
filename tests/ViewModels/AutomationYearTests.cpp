// A year of hourly ticks over a small disk that changes by a script: every scan, nudge and reminder of it.
#include "AutomationTest.h"
#include "ForwardingFileSystem.h"
#include <functional>
#include <map>

namespace quillane {
namespace {

namespace Keys = DefaultsKeys;

// Each file takes 4.1 GB.
class Magnified final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    Result<> walk(const FileURL& root, WalkOptions options, Visitor visit) const override {
        return ForwardingFileSystem::walk(root, options, [&](const WalkEntry& entry) {
            WalkEntry larger = entry;
            larger.allocated = entry.type == EntryType::regular ? 4'096'000'000 : 0;
            return visit(larger);
        });
    }
};

// From one tick to another, both among them, there is a scan every so many ticks.
struct Scans {
    int first;
    int last;
    int every;
    friend bool operator==(const Scans&, const Scans&) = default;
    friend void PrintTo(const Scans& scans, std::ostream* out) {
        *out << "{" << scans.first << ", " << scans.last << ", " << scans.every << "}";
    }
};

class AutomationYear : public AutomationTest {
  protected:
    AutomationYear() {
        library = std::make_unique<AppLibrary>(large);
        for (const auto key : {Keys::kScheduledScans, Keys::kWeeklyReminder, Keys::kNudgeOnThreshold,
                               Keys::kNudgeOnLowDisk, Keys::kNudgeOnNewOrphans, Keys::kNudgeOnNewStartup}) {
            turnOn(key);
        }
        setFree(50);
    }
    ~AutomationYear() override { library.reset(); }

    // What an application left behind long ago: 4.1 GB.
    void leave(const std::string& vendor) {
        const auto folder = "Users/alex/Library/Caches/" + vendor + ".app";
        disk.allocated(folder + "/data", 4'096);
        disk.modified(folder, Date::fromUnix(1'600'000'000));
    }
    void takeAway(const std::string& vendor) { disk.remove("Users/alex/Library/Caches/" + vendor + ".app"); }
    void addAgent(const std::string& label) {
        disk.file(agent(label), "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
    }
    void removeAgent(const std::string& label) { disk.remove(agent(label)); }
    static std::string agent(const std::string& label) {
        return "Users/alex/Library/LaunchAgents/" + label + ".plist";
    }
    void setFree(Bytes percent) { faulty.pretendSpace({.free = percent, .size = 100}); }
    void setClock(int days) { clock.setNow(clock.now().addingSeconds(days * 86'400.0)); }

    // Lets a year pass. What the script has for a tick happens right before it.
    void live(const std::map<int, std::function<void()>>& script) {
        library->startAutomationLoop();
        runner.settle();
        for (int tick = 0; tick < 365 * 24; ++tick) {
            if (const auto entry = script.find(tick); entry != script.end()) {
                entry->second();
            }
            const int before = scans();
            notifications.added.clear();
            passHour();
            if (scans() != before) {
                EXPECT_EQ(scans(), before + 1);
                noteScan(tick);
            }
            for (const auto& notification : notifications.added) {
                told.push_back(std::to_string(tick) + " " + notification.title);
            }
        }
    }
    void noteScan(int tick) {
        auto& runs = scanned;
        if (!runs.empty() && runs.back().every == 0) {
            runs.back().every = tick - runs.back().last;
            runs.back().last = tick;
        } else if (!runs.empty() && tick - runs.back().last == runs.back().every) {
            runs.back().last = tick;
        } else {
            runs.push_back({tick, tick, 0});
        }
    }

    std::vector<Scans> scanned;
    std::vector<std::string> told;
    Magnified magnified{faulty};
    const Platform large{.files = magnified,
                         .commands = commands,
                         .metadata = metadata,
                         .clock = clock,
                         .tasks = runner,
                         .workspace = workspace,
                         .trash = trash,
                         .runningApplications = running,
                         .defaults = defaults,
                         .notifications = notifications,
                         .power = power};
};

constexpr int day(int number) {
    return number * 24;
}

TEST_F(AutomationYear, EachScanNudgeAndReminderOfAYearIsToldInItsHour) {
    leave("com.one");
    addAgent("com.agent.one");
    live({{day(10), [&] { leave("com.two"); }},
          {day(20), [&] { takeAway("com.two"); }},
          {day(30), [&] { leave("com.two"); }},
          {day(40), [&] { addAgent("com.agent.two"); }},
          {day(50) + 7, [&] { setFree(9); }},
          {day(55), [&] { setFree(10); }},
          {day(60), [&] { setFree(5); }},
          {day(65), [&] { setFree(50); }},
          {day(70) + 5, [&] { power.isLowPower = true; }},
          {day(80) + 5, [&] { power.isLowPower = false; }},
          {day(90), [&] { takeAway("com.one"), takeAway("com.two"); }},
          {day(95), [&] { leave("com.three"); }},
          {day(100), [&] { leave("com.four"), leave("com.five"); }},
          {day(120), [&] { setClock(-3); }},
          {day(150), [&] { setClock(10); }},
          {day(160), [&] { removeAgent("com.agent.two"); }},
          {day(165), [&] { addAgent("com.agent.two"); }},
          {day(200), [&] { defaults.set(Keys::kScheduledScans, false); }},
          {day(220),
           [&] {
               defaults.set(Keys::kScheduledScans, true);
               defaults.set(Keys::kScanFrequencyHours, std::int64_t{168});
           }},
          {day(300), [&] { defaults.set(Keys::kWeeklyReminder, false); }},
          {day(320), [&] { library->isSweeping = true; }},
          {day(330), [&] { library->isSweeping = false; }},
          {day(340), [&] { defaults.set(Keys::kScanFrequencyHours, std::int64_t{6}); }},
          {day(350), [&] { turnOn(Keys::kWeeklyReminder); }}});
    EXPECT_EQ(scanned, (std::vector<Scans>{{0, day(70), 24},
                                           {day(80) + 5, day(119) + 5, 24}, // power was saved
                                           {day(120), day(199), 24},  // three days came twice, ten never
                                           {day(220), day(318), 168}, // nothing was scanned for 20 days
                                           {day(330), day(337), 168}, // a sweep ran
                                           {day(340), day(364) + 18, 6}}));
    EXPECT_EQ(told,
              (std::vector<std::string>{
                  "0 4.1 GB reclaimable",
                  "168 4.1 GB reclaimable",
                  "240 8.19 GB can be reclaimed",
                  "240 1 removed app left files behind",
                  "336 8.19 GB reclaimable",
                  "504 4.1 GB reclaimable",
                  "672 4.1 GB reclaimable",
                  "720 8.19 GB can be reclaimed", // both have cleared and returned
                  "720 1 removed app left files behind",
                  "840 8.19 GB reclaimable",
                  "960 Something new starts automatically",
                  "1008 8.19 GB reclaimable",
                  "1176 8.19 GB reclaimable",
                  "1207 Disk is 9% free", // no scan is needed to see it
                  "1344 8.19 GB reclaimable",
                  "1440 Disk is 5% free",
                  "1512 8.19 GB reclaimable",
                  "1680 8.19 GB reclaimable",
                  "1925 8.19 GB reclaimable", // due since 1848
                  "2093 8.19 GB reclaimable",
                  "2285 4.1 GB reclaimable", // due since 2261, when there was nothing; and no new orphan
                  "2405 12.29 GB can be reclaimed",
                  "2405 2 removed apps left files behind",
                  "2453 12.29 GB reclaimable",
                  "2621 12.29 GB reclaimable",
                  "2789 12.29 GB reclaimable",
                  "3029 12.29 GB reclaimable", // a week and three days that came twice
                  "3197 12.29 GB reclaimable",
                  "3365 12.29 GB reclaimable",
                  "3533 12.29 GB reclaimable",
                  "3600 12.29 GB reclaimable", // the clock was set forward
                  "3768 12.29 GB reclaimable",
                  "3936 12.29 GB reclaimable",
                  "3960 Something new starts automatically",
                  "4104 12.29 GB reclaimable",
                  "4272 12.29 GB reclaimable",
                  "4440 12.29 GB reclaimable",
                  "4608 12.29 GB reclaimable",
                  "4776 12.29 GB reclaimable",
                  "4944 12.29 GB reclaimable",
                  "5113 12.29 GB reclaimable", // after no scan a week is exactly 168 ticks: not yet
                  "5281 12.29 GB reclaimable",
                  "5449 12.29 GB reclaimable",
                  "5617 12.29 GB reclaimable",
                  "5785 12.29 GB reclaimable",
                  "5953 12.29 GB reclaimable",
                  "6121 12.29 GB reclaimable",
                  "6289 12.29 GB reclaimable",
                  "6457 12.29 GB reclaimable",
                  "6625 12.29 GB reclaimable",
                  "6793 12.29 GB reclaimable",
                  "6961 12.29 GB reclaimable",
                  "7129 12.29 GB reclaimable",
                  "8400 12.29 GB reclaimable",
                  "8568 12.29 GB reclaimable",
                  "8736 12.29 GB reclaimable",
              }));
}

} // namespace
} // namespace quillane
