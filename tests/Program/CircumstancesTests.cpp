// The program where things are missing or broken, tried with the program: it shows what it can and changes nothing.
#include "DefaultsKeys.h"
#include "ProgramTest.h"
#include <QDBusMessage>
#include <QElapsedTimer>
#include <array>
#include <filesystem>
#include <functional>

namespace quillane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Far longer than a start takes, and shorter than any library waits for a bus.
constexpr auto kSoon = 20'000ms;

struct Circumstances : ProgramTest {
    Circumstances() { folder.folder("home/quillane"); }
    std::string settings() const { return folder.at("home/quillane/defaults.plist"); }
    std::string bytes() const {
        QFile file(QString::fromStdString(settings()));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }
    // Whether the program on the bus has its window and hears.
    bool answersOnTheBus() {
        const auto call = QDBusMessage::createMethodCall(kName, QStringLiteral("/org/quillane/Quillane"),
                                                         QStringLiteral("org.freedesktop.DBus.Peer"),
                                                         QStringLiteral("Ping"));
        return bus.connect().call(call, QDBus::Block, kLong).type() == QDBusMessage::ReplyMessage;
    }
    bool isUpSoon(Start& start) const {
        QElapsedTimer timer;
        timer.start();
        while (start.runs() && timer.elapsed() < kSoon.count()) {
            if (isUp(kSoon - std::chrono::milliseconds(timer.elapsed()))) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(Circumstances, ABusThatHasStoppedKeepsNoWindowAway) {
    for (const bool isUsersBus : {true, false}) {
        PrivateBus stopped;
        stopped.freeze();
        systemBus = isUsersBus ? QString() : stopped.address();
        Start first;
        start(first, isUsersBus ? stopped.address() : bus.address());
        EXPECT_TRUE(isUpSoon(first)) << isUsersBus << first.words();
    }
}

TEST_F(Circumstances, WithoutAnyBusThereIsAWindow) {
    systemBus = kNoBus;
    Start first;
    start(first, kNoBus);
    EXPECT_TRUE(isUpSoon(first)) << first.words();
}

TEST_F(Circumstances, WhereTheHomeCannotBeWrittenThereIsAWindowAndOne) {
    fs::remove_all(folder.at("home/quillane"));
    fs::permissions(folder.at("home"), fs::perms::owner_read | fs::perms::owner_exec);
    Start first;
    start(first, bus.address());
    while (first.runs() && !hasOwner()) {
    }
    ASSERT_TRUE(answersOnTheBus()) << first.words();
    Start second;
    start(second, bus.address());
    EXPECT_EQ(second.status(), 0) << second.words();
    EXPECT_TRUE(first.runs()) << first.words();
    EXPECT_TRUE(fs::is_empty(folder.at("home")));
}

// What stands where the settings are. None of it is an operation that could be put back, or anything else to be written.
struct Damage {
    const char* name;
    std::function<void(const std::string& path)> make;
};

void write(const std::string& path, const std::string& bytes) {
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
}

std::string listOf(const std::string& value) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>\n";
    using namespace DefaultsKeys;
    for (const auto key :
         std::array{kProtectedPaths,    kLastOperation,      kRecentUninstalls,   kHasSeenOnboarding,
                    kShowMenuBarExtra,  kScheduledScans,     kScanFrequencyHours, kLastScan,
                    kWeeklyReminder,    kLastReminder,       kNudgeOnThreshold,   kThresholdGB,
                    kNudgedThreshold,   kNudgeOnLowDisk,     kLowDiskPercent,     kNudgedLowDisk,
                    kNudgeOnNewOrphans, kKnownOrphanVendors, kNudgeOnNewStartup,  kKnownStartupLabels,
                    kWatchUninstalls}) {
        text += "<key>" + std::string(key) + "</key>" + value + "\n";
    }
    return text + "</dict></plist>\n";
}

struct DamagedSettings : Circumstances, testing::WithParamInterface<Damage> {};

TEST_P(DamagedSettings, KeepNoWindowAwayAndStayUntilSomethingIsChanged) {
    GetParam().make(settings());
    const auto kind = fs::symlink_status(settings()).type();
    const bool isFile = kind == fs::file_type::regular;
    const auto before = isFile ? bytes() : std::string();
    Start first;
    startAndWait(first, bus.address());
    EXPECT_TRUE(isUp()); // once more: what came with the first turns is done
    first.end();
    EXPECT_EQ(fs::symlink_status(settings()).type(), kind);
    if (isFile) {
        EXPECT_EQ(bytes(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Every, DamagedSettings,
    testing::Values(
        Damage{"Empty", [](const auto& path) { write(path, ""); }},
        Damage{"Garbage", [](const auto& path) { write(path, std::string(4096, '\xC3')); }},
        Damage{"HalfAFile", [](const auto& path) { write(path, listOf("<true/>").substr(0, 300)); }},
        Damage{"Huge", [](const auto& path) { write(path, std::string(64UL << 20, 'x')); }},
        Damage{"Folder", [](const auto& path) { fs::create_directory(path); }},
        Damage{"Pipe", [](const auto& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
        Damage{"Device", [](const auto& path) { fs::create_symlink("/dev/zero", path); }},
        Damage{"Circle", [](const auto& path) { fs::create_symlink(path, path); }},
        Damage{"Texts", [](const auto& path) { write(path, listOf("<string>nothing</string>")); }},
        Damage{"Lists", [](const auto& path) { write(path, listOf("<array><integer>1</integer></array>")); }},
        Damage{"Tables", [](const auto& path) { write(path, listOf("<dict><key>a</key><true/></dict>")); }},
        Damage{"Dates", [](const auto& path) { write(path, listOf("<date>2999-01-01T00:00:00Z</date>")); }},
        Damage{"Bytes", [](const auto& path) { write(path, listOf("<data>e30=</data>")); }},
        Damage{"Zeros", [](const auto& path) { write(path, listOf("<integer>0</integer>")); }},
        Damage{"NoNumbers", [](const auto& path) { write(path, listOf("<real>-0.0</real>")); }}),
    [](const auto& info) { return info.param.name; });

// Where all that can be on is on, a scan that ends may note what it has told, and only that.
TEST_F(Circumstances, SettingsOfSenselessNumbersKeepNoWindowAway) {
    for (const auto* value :
         {"<integer>-9223372036854775808</integer>", "<integer>9223372036854775807</integer>",
          "<real>nan</real>", "<real>1e308</real>", "<true/>"}) {
        write(settings(), listOf(value));
        Start first;
        startAndWait(first, bus.address());
        EXPECT_TRUE(isUp()) << value;
        EXPECT_TRUE(first.runs()) << value << first.words();
    }
}

} // namespace
} // namespace quillane
