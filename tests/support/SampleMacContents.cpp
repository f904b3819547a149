// What stands on the sample Macs.
#include "SampleContents.h"
#include "SampleMac.h"
#include <fmt/format.h>

namespace quillane {
namespace {

using SampleExecutable::Cpu;
using enum Architecture;
using Shape = SampleIcon::Shape;

constexpr std::uint32_t kBlue = 0x3457D5;
constexpr std::uint32_t kGreen = 0x1F8F62;
constexpr std::uint32_t kAmber = 0xC98A17;
constexpr std::uint32_t kOrange = 0xE0632C;
constexpr std::uint32_t kRose = 0xCC3F5F;
constexpr std::uint32_t kTeal = 0x2B9A9A;
constexpr std::uint32_t kSlate = 0x5A6478;
constexpr std::uint32_t kPurple = 0x9A4FB5;
constexpr std::uint32_t kViolet = 0x7048D8;

using Scale = SampleScale;

void addLargeApplications(SampleMac& mac, Scale mb) {
    mac.app("/Applications/Harbour VM.app")
        .identifier("dev.harbour.vm")
        .version("5.2.1")
        .build("5218")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kBlue, Shape::star)
        .lastUsed(daysAgo(2))
        .size(mb(412.6))
        .support("Library/Application Support/dev.harbour.vm", mb(742.4))
        .support("Library/Caches/dev.harbour.vm", mb(96.2))
        .support("Library/Containers/dev.harbour.vm.guest-tools", mb(4.1))
        .supportFile("Library/Preferences/dev.harbour.vm.plist", mb(0.02))
        .support("Library/Saved Application State/dev.harbour.vm.savedState", mb(0.3))
        .supportFile("/Library/LaunchDaemons/dev.harbour.vm.network.plist", mb(0.01))
        .supportFile("/Library/PrivilegedHelperTools/dev.harbour.vm.network", mb(2.8))
        .supportByName("Library/Logs/Harbour VM", mb(1.7));
    mac.app("/Applications/Northlight RAW.app")
        .identifier("com.northlight.raw")
        .version("7.2.1")
        .build("7.2.1.4410")
        .minimumSystem("12.4")
        .architecture(universal)
        .icon(kGreen, Shape::letterN)
        .storeReceipt()
        .lastUsed(daysAgo(8))
        .size(mb(1'046.0))
        .support("Library/Containers/com.northlight.raw", mb(88.0))
        .support("Library/Application Scripts/com.northlight.raw", mb(0.02))
        .support("Library/Group Containers/NL4RAW7K2X.com.northlight.raw", mb(12.5))
        .support("Library/Caches/com.northlight.raw", mb(26.4));
    mac.app("/Applications/Tessel Studio.app")
        .identifier("co.tessel.studio")
        .version("3.9.4")
        .build("39412")
        .minimumSystem("10.15")
        .architecture(intel)
        .icon(kAmber, Shape::star)
        .lastUsed(daysAgo(245))
        .modified(daysAgo(610))
        .size(mb(23.1))
        .support("Library/Application Support/co.tessel.studio", mb(59.2))
        .support("Library/Caches/co.tessel.studio", mb(12.1))
        .support("Library/Saved Application State/co.tessel.studio.savedState", mb(0.4))
        .support("Library/HTTPStorages/co.tessel.studio", mb(1.9))
        .supportFile("Library/Preferences/co.tessel.studio.plist", mb(0.02))
        .supportByName("Library/Logs/tessel studio", mb(0.1));
    mac.app("/Applications/Meridian Maps.app")
        .identifier("com.meridianmaps.desktop")
        .version("12.0")
        .build("1200.3")
        .minimumSystem("13.3")
        .architecture(universal)
        .icon(kOrange, Shape::letterN)
        .lastUsed(daysAgo(34))
        .size(mb(21.4))
        .support("Library/Caches/com.meridianmaps.desktop", mb(51.0))
        .supportByName("Library/Application Support/Meridian Maps", mb(9.3));
    mac.app("/Applications/Pinion 3D/Pinion 3D.app")
        .identifier("org.pinion.pinion3d")
        .version("2024.2")
        .build("2024.2.118")
        .minimumSystem("14.0")
        .architecture(appleSilicon)
        .icon(kRose, Shape::letterN)
        .lastUsed(daysAgo(92))
        .size(mb(61.0))
        .deep(12)
        .support("Library/Application Support/org.pinion.pinion3d", mb(6.4))
        .support("Library/Caches/org.pinion.pinion3d", mb(1.8));
    mac.app("/Applications/Lumen Browser.app")
        .identifier("io.lumen.browser")
        .version("131.0.2")
        .build("131.0.6778")
        .minimumSystem("11.0")
        .architecture(universal)
        .icon(kAmber, Shape::disc)
        .binaryPropertyList()
        .lastUsed(hoursAgo(1))
        .size(mb(31.7))
        .helper("Lumen Browser Helper")
        .helper("Lumen Browser Helper (GPU)")
        .support("Library/Application Support/io.lumen.browser", mb(13.2))
        .support("Library/Caches/io.lumen.browser", mb(8.1))
        .support("Library/WebKit/io.lumen.browser", mb(0.4))
        .supportFile("Library/Cookies/io.lumen.browser.binarycookies", mb(0.05))
        .supportFile("Library/LaunchAgents/io.lumen.browser.update.plist", mb(0.01));
}

void addEverydayApplications(SampleMac& mac, Scale mb) {
    mac.app("/Applications/Cadenza.app")
        .identifier("com.cadenza-audio.cadenza")
        .version("4.1")
        .build("4102")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kTeal, Shape::square)
        .storeReceipt()
        .lastUsed(daysAgo(1))
        .size(mb(38.2))
        .support("Library/Containers/com.cadenza-audio.cadenza", mb(4.4));
    mac.app("/Applications/Orbit Mail.app")
        .identifier("com.orbit.mail")
        .version("6.3.2")
        .build("63204")
        .minimumSystem("12.0")
        .architecture(universal)
        .icon(kSlate, Shape::disc)
        .lastUsed(hoursAgo(3))
        .size(mb(12.8))
        .support("Library/Application Support/com.orbit.mail", mb(19.6))
        .support("Library/Caches/com.orbit.mail", mb(4.7));
    mac.app("/Applications/Plotline.app")
        .identifier("app.plotline.mac")
        .version("1.18")
        .build("1180")
        .minimumSystem("12.0")
        .architecture(universal)
        .icon(kTeal, Shape::square)
        .lastUsed(daysAgo(16))
        .size(mb(29.4));
    mac.app("/Applications/Brambleworks/Brambleworks.app")
        .identifier("com.brambleworks.studio")
        .version("5.0.7")
        .build("507")
        .minimumSystem("10.13")
        .architecture(intel)
        .icon(kPurple, Shape::letterN)
        .lastUsed(daysAgo(400))
        .modified(yearsAgo(4))
        .size(mb(21.3))
        .support("Library/Caches/com.brambleworks.studio", mb(3.5));
    mac.app("/Applications/Driftboard.app")
        .identifier("com.driftboard.mac")
        .version("8.4")
        .build("8.4.1")
        .minimumSystem("12.3")
        .architecture(universal)
        .icon(kPurple, Shape::triangle)
        .storeReceipt()
        .lastUsed(daysAgo(5))
        .size(mb(17.1))
        .support("Library/Containers/com.driftboard.mac", mb(2.5));
    mac.app("/Applications/Copperplate.app")
        .identifier("design.copperplate.app")
        .version("2.2.0")
        .build("220")
        .minimumSystem("11.0")
        .architecture(universal)
        .icon(kGreen, Shape::dome)
        .binaryPropertyList()
        .lastUsed(daysAgo(213))
        .size(mb(14.2));
    mac.app("/Applications/Vesper Notes.app")
        .identifier("com.vesper.notes")
        .version("10.6")
        .build("10.6.88")
        .minimumSystem("14.0")
        .architecture(appleSilicon)
        .icon(kTeal, Shape::square)
        .storeReceipt()
        .lastUsed(daysAgo(1))
        .size(mb(7.7))
        .support("Library/Containers/com.vesper.notes", mb(2.9))
        .support("Library/Group Containers/group.com.vesper.notes", mb(0.7));
    mac.app("/Applications/Halyard.app")
        .identifier("sh.halyard.desktop")
        .version("0.44.1")
        .build("4410")
        .minimumSystem("12.0")
        .architecture(universal)
        .icon(kRose, Shape::letterN)
        .lastUsed(daysAgo(22))
        .size(mb(9.8));
    mac.app("/Applications/Fernway.app")
        .identifier("com.fernway.fernway")
        .version("1.0.3")
        .build("103")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kGreen, Shape::triangle)
        .modified(daysAgo(47))
        .size(mb(8.4));
    mac.app("/Applications/Pagewright.app")
        .identifier("com.pagewright.pagewright")
        .version("6.11")
        .build("611")
        .minimumSystem("10.15")
        .architecture(universal)
        .icon(kTeal, Shape::star)
        .lastUsed(daysAgo(124))
        .size(mb(7.3));
    mac.app("/Applications/Skein.app")
        .identifier("com.looseknit.skein")
        .version("3.3.1")
        .build("331")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kOrange, Shape::letterN)
        .lastUsed(daysAgo(63))
        .size(mb(6.2));
    mac.app("/Applications/Marlow.app")
        .identifier("com.marlowapp.marlow")
        .version("2.9")
        .build("290")
        .minimumSystem("11.0")
        .architecture(universal)
        .icon(kTeal, Shape::star)
        .binaryPropertyList()
        .lastUsed(daysAgo(36))
        .size(mb(5.4));
}

void addSmallApplications(SampleMac& mac, Scale mb) {
    mac.app("/Applications/Quartzo.app")
        .identifier("net.quartzo.player")
        .version("1.4.2")
        .build("142")
        .minimumSystem("10.6")
        .architecture(intel32)
        .icon(kViolet, Shape::ring)
        .lastUsed(yearsAgo(9))
        .modified(yearsAgo(10))
        .size(mb(3.9))
        .supportByName("Library/Application Support/Quartzo", mb(0.2));
    mac.app("/Applications/Kettle.app")
        .identifier("com.kettle.timer")
        .version("4.0.1")
        .build("401")
        .minimumSystem("12.0")
        .architecture(universal)
        .icon(kTeal, Shape::letterN)
        .lastUsed(daysAgo(6))
        .size(mb(3.8));
    mac.app("/Applications/Sorrel.app")
        .identifier("com.sorrel.ledger")
        .version("1.7")
        .build("170")
        .minimumSystem("10.12")
        .architecture(intel)
        .icon(kAmber, Shape::square)
        .lastUsed(yearsAgo(2))
        .modified(yearsAgo(3))
        .size(mb(2.7));
    mac.app("/Applications/Tallow.app")
        .identifier("com.tallow.tallow")
        .version("0.9.12")
        .build("912")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kBlue, Shape::letterN)
        .lastUsed(daysAgo(91))
        .size(mb(2.0));
    mac.app("/Applications/Utilities/Disk Almanac.app")
        .identifier("com.almanac.disk")
        .version("3.2")
        .build("320")
        .minimumSystem("11.0")
        .architecture(universal)
        .icon(kSlate, Shape::ring)
        .lastUsed(daysAgo(58))
        .size(mb(1.6));
    mac.app("/Applications/Birch Terminal.app")
        .identifier("io.birch.terminal")
        .version("1.22.0")
        .build("1220")
        .minimumSystem("12.0")
        .architecture(universal)
        .icon(kSlate, Shape::triangle)
        .lastUsed(hoursAgo(2))
        .size(mb(1.5));
    mac.app("/Applications/Ampersand.app")
        .identifier("com.ampersand.fonts")
        .version("2.6")
        .build("26")
        .minimumSystem("10.15")
        .architecture(universal)
        .icon(kRose, Shape::disc)
        .storeReceipt()
        .lastUsed(daysAgo(12))
        .size(mb(1.3));
    mac.app("Applications/Sidecar Sync.app")
        .identifier("com.sidecarsync.agent")
        .version("1.1")
        .build("11")
        .minimumSystem("13.0")
        .architecture(appleSilicon)
        .icon(kOrange, Shape::ring)
        .lastUsed(daysAgo(3))
        .size(mb(1.1))
        .supportFile("Library/LaunchAgents/com.sidecarsync.agent.plist", mb(0.01));
    mac.app("/Volumes/Backup Drive/Applications/Harbour Tools.app")
        .identifier("dev.harbour-tools.cli")
        .version("5.0")
        .build("5000")
        .minimumSystem("12.0")
        .architecture(appleSilicon)
        .icon(kBlue, Shape::dome)
        .lastUsed(daysAgo(150))
        .size(mb(0.9));
    mac.app("Downloads/Pocket Loom.app")
        .identifier("com.pocketloom.trial")
        .version("1.0b4")
        .build("4")
        .minimumSystem("13.0")
        .architecture(universal)
        .icon(kPurple, Shape::square)
        .lastUsed(daysAgo(20))
        .size(mb(0.8));
}

void addSystemApplications(SampleMac& mac, Scale mb) {
    const struct {
        const char* path;
        const char* identifier;
        std::uint32_t rgb;
        Shape shape;
    } system[] = {
        {"/System/Applications/Almanac.app", "com.apple.sample.almanac", kRose, Shape::square},
        {"/System/Applications/Chess Set.app", "com.apple.sample.chess", kSlate, Shape::star},
        {"/System/Applications/Letters.app", "com.apple.sample.letters", kBlue, Shape::dome},
        {"/System/Applications/Stills.app", "com.apple.sample.stills", kAmber, Shape::ring},
        {"/System/Applications/Utilities/Shell.app", "com.apple.sample.shell", kSlate, Shape::square},
        {"/System/Applications/Utilities/Gauges.app", "com.apple.sample.gauges", kGreen, Shape::ring},
    };
    for (const auto& [path, identifier, rgb, shape] : system) {
        mac.app(path)
            .identifier(identifier)
            .version("15.1")
            .build("24B83")
            .minimumSystem("15.1")
            .executable(SampleExecutable::fat64({Cpu::x86_64, Cpu::arm64}), universal)
            .binaryPropertyList()
            .icon(rgb, shape)
            .lastUsed(daysAgo(4))
            .size(mb(0.7));
    }
    mac.app("/System/Library/CoreServices/Dock Host.app").identifier("com.apple.sample.dockhost").notListed();
}

void addOddExecutables(SampleMac& mac) {
    mac.app("/Applications/Parlour Organ.app")
        .identifier("com.organworks.parlour")
        .version("1.0")
        .architecture(powerPC)
        .lastUsed(yearsAgo(14));
    mac.app("/Applications/Steam Press.app")
        .identifier("com.organworks.press")
        .version("0.8")
        .lastUsed(yearsAgo(15))
        .executable(SampleExecutable::byteSwapped(Cpu::powerPC64), powerPC);
    mac.app("/Applications/Bridgework.app")
        .identifier("com.bridgework.converter")
        .version("2.0")
        .lastUsed(yearsAgo(7))
        .executable(SampleExecutable::fat({Cpu::powerPC, Cpu::i386}), intel32);
    mac.app("/Applications/Crossfade.app")
        .identifier("com.crossfade.dj")
        .version("6.1")
        .lastUsed(daysAgo(500))
        .executable(SampleExecutable::fat({Cpu::i386, Cpu::x86_64}), intel);
    mac.app("/Applications/Quarto Reader.app")
        .identifier("com.quarto.reader")
        .version("9.0")
        .lastUsed(daysAgo(9))
        .executable(SampleExecutable::fat64({Cpu::arm64}), appleSilicon);
    mac.app("/Applications/Launch Pad Script.app")
        .identifier("com.example.launchpad")
        .version("1")
        .executable(SampleExecutable::script(), unknown);
    mac.app("/Applications/Broken Arrow.app")
        .identifier("com.example.broken")
        .version("1.1")
        .executable(SampleExecutable::damaged(), unknown);
    mac.app("/Applications/Hollow.app").identifier("com.example.hollow").version("1.2").missingExecutable();
    mac.app("/Applications/Wrapper.app").identifier("com.example.wrapper").version("1.3").withoutExecutable();
}

void addOddPropertyLists(SampleMac& mac) {
    mac.app("/Applications/Nameless.app").displayName("").identifier("com.example.nameless").version("3.0");
    mac.app("/Applications/No Identity.app").version("0.1");
    mac.app("/Applications/Vacant Identity.app").identifier("").version("0.2");
    mac.app("/Applications/Numbered.app")
        .identifier("com.example.numbered")
        .property("CFBundleShortVersionString", 3)
        .build("30");
    mac.app("/Applications/fr.lproj-less.app")
        .displayName("Café Crème")
        .identifier("com.example.cafe")
        .version("2.1")
        .binaryPropertyList();
    mac.app("/Applications/Old Stem.app").withoutBundleName().identifier("com.example.stem");
    mac.app("/Applications/Damaged.app")
        .rawPropertyList("<?xml version=\"1.0\"?><plist><dict><key>")
        .notListed();
    mac.app("/Applications/Truncated.app").rawPropertyList("bplist00\xd1\x01").notListed();
    mac.app("/Applications/List On Top.app")
        .rawPropertyList(xmlPropertyList(Plist::array({"CFBundleIdentifier"})))
        .notListed();
    mac.app("/Applications/No List.app").withoutPropertyList().notListed();
}

void addOddPlaces(SampleMac& mac) {
    mac.app("Applications/Tallow.app")
        .identifier("com.othertallow.candles")
        .version("0.3")
        .lastUsed(daysAgo(70));
    mac.app(".local/apps/Kettledrum.app")
        .identifier("com.kettledrum.rhythm")
        .version("1.5")
        .outsideTheIndex()
        .seenThroughLink("/Applications/Kettledrum.app");
    mac.link("/Applications/Browser.app", "Lumen Browser.app");
    mac.link("/Applications/Gone.app", "/Volumes/Unplugged/Gone.app");
    mac.link("/Applications/Loop.app", "Loop.app");
    mac.app(".Trash/Old Player.app").identifier("com.oldplayer.player").version("2.0").notListed();
    mac.app("Library/Caches/Updates/Staged.app").identifier("com.example.staged").notListed();
    mac.app("Library/Developer/Xcode/DerivedData/Demo-abc/Build/Demo.app")
        .identifier("com.alex.demo")
        .notListed();
    mac.app("/usr/libexec/Agent.app").identifier("com.apple.sample.agent").notListed();
    mac.app("/Applications/Deep Vendor/Tools/Extra/Far Down.app")
        .identifier("com.deepvendor.fardown")
        .version("1.0");
    mac.app("/Applications/Sparse Matrix.app")
        .identifier("com.sparsematrix.solver")
        .version("7")
        .sparseFile(megabytes(800))
        .deep(40);
    mac.file("/Applications/Notes.txt", "not an application\n");
    mac.file("/Applications/LICENSE", "neither a folder nor an application\n");
    mac.indexed("/Applications/Moved Away.app");
}

// What removed applications left behind, and what only looks like it.
void addOrphans(SampleMac& mac, Scale mb) {
    constexpr auto kAdmin = "/Library/";
    const auto orphan = [&](const std::string& path, const char* identifier, const char* vendor,
                            double megabytesOfIt, Ago ago) {
        mac.orphan(path.starts_with(kAdmin) ? path : "Library/" + path, identifier, vendor, mb(megabytesOfIt),
                   ago);
    };
    const auto sketchpad = yearsAgo(2);
    orphan("Application Support/com.sketchpad.draw", "com.sketchpad.draw", "com.sketchpad", 84.2, sketchpad);
    orphan("Caches/com.sketchpad.draw", "com.sketchpad.draw", "com.sketchpad", 18.6, sketchpad);
    orphan("Caches/com.sketchpad.draw.thumbnails", "com.sketchpad.draw.thumbnails", "com.sketchpad", 4.3,
           sketchpad);
    orphan("Saved Application State/com.sketchpad.draw.savedState", "com.sketchpad.draw", "com.sketchpad",
           0.4, sketchpad);
    const auto relay = daysAgo(400);
    orphan("Application Support/chat.relay.Desktop", "chat.relay.Desktop", "chat.relay", 31.0, relay);
    orphan("Caches/chat.relay.Desktop", "chat.relay.Desktop", "chat.relay", 22.1, daysAgo(420));
    orphan("Caches/chat.relay.Desktop.ShipIt", "chat.relay.Desktop.ShipIt", "chat.relay", 6.2, relay);
    orphan("Group Containers/RLY0123456.group.chat.relay.shared", "chat.relay.shared", "chat.relay", 1.1,
           relay);
    orphan("WebKit/chat.relay.Desktop", "chat.relay.Desktop", "chat.relay", 0.5, relay);
    orphan("Logs/chat.relay.Desktop", "chat.relay.Desktop", "chat.relay", 0.3, relay);
    const auto tempo = daysAgo(1104);
    orphan("Application Support/fm.tempo.desktop", "fm.tempo.desktop", "fm.tempo", 38.8, tempo);
    orphan("/Library/PrivilegedHelperTools/fm.tempo.desktop.updater", "fm.tempo.desktop.updater", "fm.tempo",
           5.2, tempo);
    orphan("Caches/fm.tempo.desktop", "fm.tempo.desktop", "fm.tempo", 2.2, tempo);
    orphan("Containers/com.inkwell.writer", "com.inkwell.writer", "com.inkwell", 14.2, daysAgo(65));
    orphan("Application Scripts/com.inkwell.writer", "com.inkwell.writer", "com.inkwell", 0.1, daysAgo(65));
    orphan("/Library/Application Support/io.vantage.monitor", "io.vantage.monitor", "io.vantage", 9.8,
           yearsAgo(4));
    orphan("Group Containers/group.com.mossweather.shared", "com.mossweather.shared", "com.mossweather", 6.1,
           daysAgo(215));

    mac.tree("Library/Caches/com.lately.used", mb(3)).modified("Library/Caches/com.lately.used", daysAgo(29));
    mac.tree("Library/Caches/com.apple.sample.cache", mb(3))
        .modified("Library/Caches/com.apple.sample.cache", yearsAgo(2));
    mac.tree("Library/Caches/com.orbit.calendar", mb(2))
        .modified("Library/Caches/com.orbit.calendar", yearsAgo(2));
    mac.tree("Library/Application Support/Acme", mb(5))
        .modified("Library/Application Support/Acme", yearsAgo(6));
    mac.tree("Library/Caches/.com.hidden.tool", mb(1))
        .modified("Library/Caches/.com.hidden.tool", yearsAgo(2));
}

// What the tools of developers keep, what projects depend on, and what only looks like it.
void addDeveloperLocations(SampleMac& mac, Scale mb) {
    constexpr bool kSafe = true;
    constexpr bool kNotSafe = false;
    const auto location = [&](const std::string& path, const char* tool, const char* kind, bool safe,
                              double megabytesOfIt,
                              Ago ago) { mac.location(path, tool, kind, safe, mb(megabytesOfIt), ago); };
    const std::string xcode = "Library/Developer/Xcode/";
    location(xcode + "DerivedData", "Xcode", "Derived data", kSafe, 58.4, daysAgo(1));
    location(xcode + "iOS DeviceSupport/iPhone15,3 17.5 (21F79)", "Xcode",
             "iOS device support - iPhone15,3 17.5 (21F79)", kSafe, 31.2, daysAgo(220));
    location(xcode + "iOS DeviceSupport/iPhone14,2 16.4 (20E247)", "Xcode",
             "iOS device support - iPhone14,2 16.4 (20E247)", kSafe, 12.2, daysAgo(500));
    location(xcode + "Archives", "Xcode", "Archives", kNotSafe, 42.7, daysAgo(70));
    location("Library/Developer/CoreSimulator/Devices", "Simulator", "Simulator devices", kNotSafe, 89.2,
             daysAgo(8));
    location("Library/Caches/Homebrew", "Homebrew", "Download cache", kSafe, 13.4, daysAgo(4));
    location("Library/Caches/go-build", "Go", "Build cache", kSafe, 4.1, daysAgo(1));
    location("Library/Caches/pip", "pip", "Wheel cache", kSafe, 2.7, daysAgo(34));
    location("Library/Caches/typescript", "TypeScript", "Type acquisition cache", kSafe, 0.4, daysAgo(6));
    location(".npm/_cacache", "npm", "Package cache", kSafe, 9.2, hoursAgo(1));
    location(".gradle/caches", "Gradle", "Dependency cache", kSafe, 7.0, daysAgo(62));
    location(".cargo/registry", "Cargo", "Crate registry", kSafe, 2.3, daysAgo(23));
    location("Library/Application Support/MobileSync/Backup/00008110-001A2C", "Finder",
             "iPhone / iPad backup - 00008110-001A2C", kNotSafe, 96.0, daysAgo(150));
    location("Projects/atlas/web/node_modules", "npm / yarn / pnpm", "node_modules in atlas/web", kNotSafe,
             14.6, daysAgo(23));
    location("Projects/tidepool/.venv", "Python", ".venv in tidepool", kNotSafe, 8.1, daysAgo(40));
    location("code/almanac/venv", "Python", "venv in almanac", kNotSafe, 1.9, daysAgo(300));

    // Below what is pruned: hidden, called Library, a package, too deep, or dependencies themselves.
    for (const char* pruned : {"Projects/atlas/.git", "Projects/tidepool/Library", "Projects/Demo.app",
                               "Projects/1/2/3/4/5", "Projects/atlas/web/node_modules/left-pad"}) {
        mac.file(pruned + std::string("/node_modules/index.js"), "module.exports = 1;\n");
    }
    mac.folder("Projects/empty/node_modules").folder(".m2/repository").folder("Projects/atlas/src");
    mac.file("Library/Caches/Yarn/.gitkeep", "");
    mac.tree("Music/band/node_modules", mb(1)); // no project folder
    // Laid last in these trees, so their dates are told again.
    mac.modified("Projects/atlas/web/node_modules", daysAgo(23));
}

} // namespace

SampleMac SampleMac::full(Date now) {
    SampleMac mac(now);
    mac.usualFolders();
    const Scale mb;
    addLargeApplications(mac, mb);
    addEverydayApplications(mac, mb);
    addSmallApplications(mac, mb);
    addSystemApplications(mac, mb);
    addOddExecutables(mac);
    addOddPropertyLists(mac);
    addOddPlaces(mac);
    addOrphans(mac, mb);
    addDeveloperLocations(mac, mb);
    SampleContents::addOwnFiles(mac, mb);
    SampleContents::addStartupItems(mac);
    return mac;
}

SampleMac SampleMac::small(Date now) {
    SampleMac mac(now);
    mac.usualFolders();
    const Scale kb{1'000};
    addLargeApplications(mac, kb);
    addEverydayApplications(mac, kb);
    addSmallApplications(mac, kb);
    addSystemApplications(mac, kb);
    addOddExecutables(mac);
    addOddPropertyLists(mac);
    addOddPlaces(mac);
    addOrphans(mac, kb);
    addDeveloperLocations(mac, kb);
    SampleContents::addOwnFiles(mac, kb);
    SampleContents::addStartupItems(mac);
    mac.largeIcons(false);
    return mac;
}

SampleMac SampleMac::manyApplications(int count, Date now) {
    SampleMac mac(now);
    mac.usualFolders();
    for (int i = 0; i < count; ++i) {
        const auto identifier = fmt::format("com.vendor{}.app{}", i / 4, i);
        auto& app = mac.app(fmt::format("/Applications/Application {}.app", i));
        app.identifier(identifier)
            .version(fmt::format("{}.{}", i / 10, i % 10))
            .build(fmt::format("{}", i))
            .architecture(kAllArchitectures[static_cast<std::size_t>(i) % 3])
            .lastUsed(daysAgo(i % 700))
            .size(kilobytes(64))
            .support("Library/Caches/" + identifier, kilobytes(16))
            .supportFile("Library/Preferences/" + identifier + ".plist", kilobytes(4));
        if (i % 2 == 1) {
            app.binaryPropertyList();
        }
    }
    return mac;
}

} // namespace quillane
