// What the program does without being asked: what it tells on the desktop when that becomes true, and what it makes of
// an application that somebody else has removed.
#include "AppLibrary.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Defaults.h"
#include "DefaultsKeys.h"
#include "DiskFolder.h"
#include "Formatting.h"
#include "Overview/OverviewView.h"
#include "Overview/RecentUninstallCard.h"
#include "Overview/RecentUninstallCards.h"
#include "PropertyListWriter.h"
#include "QuillaneApp.h"
#include "RecordingNotifications.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewModel.h"
#include "Shell/ContentView.h"
#include "Tour.h"
#include "Visitor.h"
#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <span>

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr Bytes kGigabyte = 1'000'000'000;
constexpr Bytes kCargo = 1'370'000'000;
constexpr std::int64_t kMoreThanAnyDiskHasFree = 101; // percent
constexpr int kPercent = 100;

const std::string kHome(SampleMac::kHome);
// Somebody removed this one's application long ago, and it kept a cargo.
const std::string kAbandoned = kHome + "/Library/Application Support/com.quiettide.ferry";
const std::string kAgent = kHome + "/Library/LaunchAgents/com.quiettide.bell.plist";
const std::string kVanishing = "Tessel Studio";
constexpr std::array kNudges = {DefaultsKeys::kNudgeOnThreshold, DefaultsKeys::kNudgeOnLowDisk,
                                DefaultsKeys::kNudgeOnNewOrphans, DefaultsKeys::kNudgeOnNewStartup};

QString lineOf(const UserNotification& notification) {
    QString line = words(notification.identifier + ": " + notification.title + " / " + notification.body);
    for (const auto& [key, value] : notification.userInfo) {
        line += words(" [" + key + " " + value + "]");
    }
    return line;
}

// Sorted: a record and a scan that run side by side tell of the same as they end.
QStringList linesOf(std::span<const UserNotification> notifications) {
    QStringList lines;
    std::ranges::transform(notifications, std::back_inserter(lines), lineOf);
    lines.sort();
    return lines;
}

// Cut to a whole number.
std::int64_t percentFree(const std::string& hostFolder) {
    const auto space = fs::space(hostFolder);
    return static_cast<std::int64_t>(static_cast<double>(space.available) /
                                     static_cast<double>(space.capacity) * kPercent);
}

Bytes sumOfLeftovers(const ExpectedApp& app) {
    return sumOfBytes(app.leftovers, [](const ExpectedApp::Leftover& leftover) { return leftover.bytes; });
}

// What carries the identifier of an application that has gone is an orphan's.
std::vector<UserNotification> toldOf(const ExpectedApp& app) {
    const Bytes orphaned = sumOfBytes(app.leftovers, [](const ExpectedApp::Leftover& leftover) {
        return leftover.confidence == LeftoverItem::Confidence::high ? leftover.bytes : 0;
    });
    return {{"uninstall-" + app.identifier.value_or(app.name),
             app.name + " left " + Formatting::byteCount(sumOfLeftovers(app)) + " behind",
             "Open Quillane to review what it left and put the space back.",
             {{"section", "Overview"}}},
            {"orphans-1",
             "1 removed app left files behind",
             Formatting::byteCount(orphaned) + " of leftovers from apps you deleted.",
             {{"section", "Orphaned Files"}}}};
}

std::vector<std::string> pathsOf(const std::vector<SweepEntry>& entries) {
    std::vector<std::string> paths;
    std::ranges::transform(entries, std::back_inserter(paths),
                           [](const SweepEntry& entry) { return entry.url.path(); });
    std::ranges::sort(paths);
    return paths;
}

} // namespace

void Tour::visitAutomation() {
    check(m_notifications.added.empty(),
          QStringLiteral("something was told that nobody wants to be told of"));
    tellWhatIsNew();
    uninstallElsewhere();
    for (const auto key : kNudges) {
        setNudge(key, false);
    }
}

void Tour::setNudge(std::string_view key, bool isOn) {
    m_app.library().platform().defaults.set(key, isOn);
}

// As an hourly look does it: first what starts by itself, then all else, and then what has become true is told.
void Tour::lookAnew() {
    auto& library = m_app.library();
    library.loadStartupItems();
    check(Visitor::waitUntil([&] { return !*library.isLoadingStartup; }),
          QStringLiteral("what starts by itself was not read"));
    Visitor::press(&window(), Qt::Key_R, Qt::ControlModifier);
    check(Visitor::waitUntil([&] { return library.phase->kind == AppLibrary::Phase::Kind::ready; }),
          QStringLiteral("the scan did not end"));
    Visitor::settle();
}

void Tour::compareTold(std::size_t before, const std::vector<UserNotification>& expected) {
    const auto told = linesOf(std::span(m_notifications.added).subspan(before));
    const auto wanted = linesOf(expected);
    check(told == wanted, QStringLiteral("told was \"%1\" and not \"%2\"")
                              .arg(told.join(QStringLiteral("; ")), wanted.join(QStringLiteral("; "))));
}

void Tour::tellWhatIsNew() {
    auto& library = m_app.library();
    auto& defaults = library.platform().defaults;
    const Bytes before = library.selectedSweepBytes();
    const std::int64_t limit = before / kGigabyte + 1; // not reached as long as nothing comes
    defaults.set(DefaultsKeys::kThresholdGB, limit);
    for (const auto key : {DefaultsKeys::kNudgeOnThreshold, DefaultsKeys::kNudgeOnNewOrphans,
                           DefaultsKeys::kNudgeOnNewStartup}) {
        setNudge(key, true);
    }
    lookAnew();
    compareTold(0, {}); // what was there when it was switched on is not new

    DiskFolder disk(m_hostFolder);
    disk.allocated(kAbandoned + "/cargo", kCargo);
    disk.modified(kAbandoned, m_mac.date(daysAgo(60)));
    disk.file(kAgent,
              xmlPropertyList(Plist::dictionary(
                  {{"Label", "com.quiettide.bell"},
                   {"ProgramArguments",
                    Plist::array({"/Applications/Lumen Browser.app/Contents/MacOS/Lumen Browser"})}})));
    defaults.set(DefaultsKeys::kLowDiskPercent, kMoreThanAnyDiskHasFree);
    setNudge(DefaultsKeys::kNudgeOnLowDisk, true);
    const Bytes left = allocatedOnDisk(m_hostFolder + kAbandoned);
    const auto reclaimable = Formatting::byteCount(checkedSum(before, left));
    const auto expectedAt = [&](std::int64_t percent) -> std::vector<UserNotification> {
        return {{"threshold",
                 reclaimable + " can be reclaimed",
                 "That's past the " + Formatting::number(limit) + " GB you asked to be told about.",
                 {{"section", "Overview"}}},
                {"lowdisk",
                 "Disk is " + Formatting::number(percent) + "% free",
                 "Quillane can reclaim " + reclaimable + " right now.",
                 {{"section", "Overview"}}},
                {"orphans-1",
                 "1 removed app left files behind",
                 Formatting::byteCount(left) + " of leftovers from apps you deleted.",
                 {{"section", "Orphaned Files"}}},
                {"startup-1",
                 "Something new starts automatically",
                 "com.quiettide.bell",
                 {{"section", "Startup"}}}};
    };
    const auto percentBefore = percentFree(m_hostFolder);
    lookAnew();
    // Somebody else may have filled or emptied the disk meanwhile.
    const bool wasBefore =
        m_notifications.standing().size() > 1 &&
        m_notifications.standing()[1].title == "Disk is " + Formatting::number(percentBefore) + "% free";
    compareTold(0, expectedAt(wasBefore ? percentBefore : percentFree(m_hostFolder)));
    const auto told = m_notifications.added.size();
    lookAnew();
    compareTold(told, {}); // each is told once
    followClick();
    disk.remove(kAbandoned);
    disk.remove(kAgent);
    lookAnew();
    compareTold(told, {});
    say(QStringLiteral("Told when it became true, and once: %1 things.").arg(told));
}

void Tour::followClick() {
    window().showSection(LibrarySection::overview);
    m_notifications.click("orphans-1");
    check(Visitor::waitUntil([this] { return *window().state().section == LibrarySection::orphans; }, 20),
          QStringLiteral("a click on the notification does not lead to its section"));
    check(Visitor::column(table(LibrarySection::orphans), 0).contains(QStringLiteral("com.quiettide.ferry")),
          QStringLiteral("the section of the notification does not show what it tells of"));
    take(QStringLiteral("orphans-of-a-notification"));
}

void Tour::uninstallElsewhere() {
    const auto* const app = expected(words(kVanishing));
    auto* const screen = overview();
    if (app == nullptr || screen == nullptr) {
        check(false, QStringLiteral("nothing to uninstall elsewhere"));
        return;
    }
    window().showSection(LibrarySection::overview);
    Visitor::settle();
    const auto whole = treeNow();
    const auto told = m_notifications.added.size();
    const auto inTrash = kHome + "/.Trash" + app->path.substr(app->path.rfind('/'));
    DiskFolder(m_hostFolder).rename(app->path, inTrash);
    auto& library = m_app.library();
    check(
        Visitor::waitUntil([&] { return !library.recentUninstalls->empty() && isListed(kVanishing, false); }),
        QStringLiteral("nobody noticed that an application has gone"));
    Visitor::settle();
    compareTold(told, toldOf(*app));
    const auto cards = screen->recentUninstalls()->cards();
    check(cards.size() == 1, QStringLiteral("%1 cards for one application").arg(cards.size()));
    if (cards.size() == 1) {
        compareCard(*cards.front(), *app);
        reviewLeftovers(*screen, *cards.front(), *app);
    }
    DiskFolder(m_hostFolder).rename(inTrash, app->path);
    check(Visitor::waitUntil([&] { return isListed(kVanishing, true); }),
          QStringLiteral("nobody noticed that an application has come back"));
    Visitor::settle();
    check(treeNow() == whole, QStringLiteral("the tree on disk is not what it was before the uninstall"));
}

bool Tour::isListed(const std::string& name, bool isThere) const {
    const auto& library = m_app.library();
    return library.phase->kind == AppLibrary::Phase::Kind::ready &&
           (std::ranges::count(*library.apps, name, &InstalledApp::name) > 0) == isThere;
}

void Tour::compareCard(const RecentUninstallCard& card, const ExpectedApp& app) {
    const auto& clock = m_app.library().platform().clock;
    const auto title = [&] {
        return words("You removed " + app.name + " " +
                     Formatting::relativeDescription(card.record().removedAt, clock.now(), clock.calendar()));
    };
    const auto early = title(); // a minute may pass while we look
    const auto shown = card.title()->accessibleName();
    check(shown == early || shown == title(), QStringLiteral("the card says ") + shown);
    checkSeen(Visitor::words(&card),
              words("It left " + Formatting::byteCount(sumOfLeftovers(app)) + " in " +
                    Formatting::counted(static_cast<std::int64_t>(app.leftovers.size()), "file") +
                    " across your Library."));
    take(QStringLiteral("overview-uninstalled-elsewhere"));
    say(shown + QStringLiteral(": ") + card.sentence()->text());
}

void Tour::reviewLeftovers(OverviewView& screen, const RecentUninstallCard& card, const ExpectedApp& app) {
    const auto treeBefore = treeNow();
    const auto trashBefore = itemsInTrash();
    Visitor::push(card.reviewButton());
    auto* const sheet = screen.leftoverReview();
    if (sheet == nullptr) {
        check(false, QStringLiteral("the review of what was left did not open"));
        return;
    }
    std::vector<std::string> sure;
    std::vector<std::string> unsure;
    for (const auto& leftover : app.leftovers) {
        (leftover.confidence == LeftoverItem::Confidence::high ? sure : unsure).push_back(leftover.path);
    }
    std::ranges::sort(sure);
    const auto included = sheet->model().review().included();
    check(pathsOf(included) == sure, QStringLiteral("not what carries the identifier is ticked"));
    check(sheet->model().review().entries().size() == app.leftovers.size(),
          QStringLiteral("the review does not list all that was left"));
    takeOf(*sheet, QStringLiteral("leftovers-review"));
    Visitor::press(sheet, Qt::Key_Return);
    check(Visitor::waitUntil([&] { return sheet->stage() == SweepPreviewSheet::Stage::done; }),
          QStringLiteral("the removal of what was left did not end"));
    compareWithTrash(included, trashBefore);
    compareStaying(unsure);
    Visitor::press(sheet, Qt::Key_Return);
    Visitor::settle();
    check(m_app.library().recentUninstalls->empty() && screen.recentUninstalls()->cards().empty(),
          QStringLiteral("the card stays after what was left has gone"));
    say(QStringLiteral("Of what it left %1 moved and %2 stayed, as on disk.")
            .arg(sure.size())
            .arg(unsure.size()));
    putBack(screen, treeBefore);
}

} // namespace quillane
