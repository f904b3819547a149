#include "Tour.h"
#include "AppLibrary.h"
#include "Applications/ApplicationsTable.h"
#include "Applications/ApplicationsTableModel.h"
#include "Components/Look.h"
#include "Components/PushButton.h"
#include "Components/SearchField.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "Hashing.h"
#include "Overview/Hero.h"
#include "Overview/OverviewView.h"
#include "Overview/PutBackCard.h"
#include "Panes/DetailPane.h"
#include "QuillaneApp.h"
#include "Review/PutBack.h"
#include "Review/ResultAlert.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewModel.h"
#include "Shell/ContentView.h"
#include "Shell/StandingScreens.h"
#include "Tables/TableView.h"
#include "TextComparison.h"
#include "Visitor.h"
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <utility>

namespace quillane {
namespace {

using Column = ApplicationsTableModel::Column;

Bytes totalOf(const ExpectedApp& app) {
    Bytes sum = app.bundleBytes;
    for (const auto& leftover : app.leftovers) {
        sum = checkedSum(sum, leftover.bytes);
    }
    return sum;
}

QString bytesText(Bytes bytes) {
    return words(Formatting::byteCount(bytes));
}

QString architectureText(Architecture architecture) {
    return words(rawValue(architecture));
}

// What a row must say, in the order of the columns but without the date, which goes on while we look.
QStringList rowOf(const ExpectedApp& app) {
    return {shownName(app.name), bytesText(totalOf(app)), architectureText(app.architecture),
            shownName(app.version)};
}

// Everything that a tree holds: kinds, names, link texts and the content of files, in one text. The folder of
// the Trash itself may come into being; what lies in it counts.
std::string fingerprint(const std::string& hostFolder) {
    namespace fs = std::filesystem;
    constexpr std::size_t kChunk = std::size_t{1} << 20U;
    std::vector<std::string> lines;
    std::string chunk(kChunk, '\0');
    for (const auto& entry : fs::recursive_directory_iterator(hostFolder)) {
        std::string line = entry.path().lexically_relative(hostFolder).string();
        if (line == std::string(SampleMac::kHome).substr(1) + "/.Trash") {
            continue;
        }
        if (entry.is_symlink()) {
            line += " -> " + fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            std::ifstream file(entry.path(), std::ios::binary);
            std::size_t hash = 0;
            while (file.read(chunk.data(), kChunk) || file.gcount() > 0) {
                const auto count = static_cast<std::size_t>(file.gcount());
                hash = hashCombine(hash,
                                   std::hash<std::string_view>{}(std::string_view(chunk).substr(0, count)));
            }
            line += " " + std::to_string(entry.file_size()) + " " + std::to_string(hash);
        } else {
            line += "/";
        }
        lines.push_back(std::move(line));
    }
    std::ranges::sort(lines);
    std::string all;
    for (const auto& line : lines) {
        all += line + "\n";
    }
    return all;
}

} // namespace

Tour::Tour(QuillaneApp& app, RecordingNotifications& notifications, FakeMenuBarExtra& panel,
           const SampleMac& mac, std::string hostFolder, QString pictures)
    : m_app(app)
    , m_notifications(notifications)
    , m_panel(panel)
    , m_mac(mac)
    , m_hostFolder(std::move(hostFolder))
    , m_pictures(std::move(pictures)) {
    for (auto& expected : m_mac.expectedApplications(m_hostFolder)) {
        if (expected.source != AppSource::system) { // those stay out of the table
            m_shown.push_back(std::move(expected));
        }
    }
}

bool Tour::run() {
    say(QStringLiteral("A sample Mac with %1 applications of others is laid out.").arg(m_shown.size()));
    beWelcomed();
    waitForScan();
    if (m_complaints.isEmpty()) {
        visitSections();
        compareTable();
        sortByEachColumn();
        selectOne();
        selectSeveral();
        search();
        shrink();
        switchToDark();
        compareOrphans();
        removeAndPutBack(LibrarySection::orphans, QStringLiteral("com.sketchpad.draw"));
        compareLocations();
        removeAndPutBack(LibrarySection::developer, QStringLiteral("Homebrew"));
        visitFiles();
        visitDuplicates();
        visitStartup();
        visitAutomation();
        cleanAndPutBack();
        visitDesktop();
    }
    for (const auto& complaint : std::as_const(m_complaints)) {
        say(QStringLiteral("WRONG: ") + complaint);
    }
    say(m_complaints.isEmpty()
            ? QStringLiteral("Everything on the screen is what lies on disk. Pictures: %1").arg(m_pictures)
            : QStringLiteral("%1 things are wrong. Pictures: %2").arg(m_complaints.size()).arg(m_pictures));
    return m_complaints.isEmpty();
}

void Tour::waitForScan() {
    auto& library = m_app.library();
    check(Visitor::waitUntil([&] { return !library.apps->empty(); }),
          QStringLiteral("no applications were found"));
    const auto measured = std::ranges::count_if(*library.apps, &InstalledApp::isMeasured);
    say(QStringLiteral("The table fills: %1 applications, %2 of them measured so far.")
            .arg(library.visibleApps().size())
            .arg(measured));
    check(Visitor::waitUntil([&] { return library.phase->kind == AppLibrary::Phase::Kind::ready; }, 120),
          QStringLiteral("the scan did not end"));
    Visitor::settle();
}

void Tour::visitSections() {
    for (const auto& standing : standingScreens()) {
        // A section's key is its place among all sections, whether they stand or not.
        const int number = static_cast<int>(standing.section) + 1;
        const auto title = words(rawValue(standing.section));
        Visitor::press(&window(), static_cast<Qt::Key>(Qt::Key_0 + number), Qt::ControlModifier);
        check(*window().state().section == standing.section,
              QStringLiteral("Ctrl+%1 does not lead to %2").arg(number).arg(title));
        take(title.toLower());
    }
    window().showSection(LibrarySection::applications);
    Visitor::settle();
}

void Tour::compareTable() {
    Bytes total = 0;
    QStringList missing;
    QStringList there;
    for (int row = 0; row < table()->model()->rowCount(); ++row) {
        QStringList cells;
        for (const auto column : {Column::kName, Column::kSize, Column::kArchitecture, Column::kVersion}) {
            cells.append(table()->model()->index(row, column).data().toString());
        }
        there.append(cells.join(QStringLiteral(" | ")));
    }
    for (const auto& app : m_shown) {
        total = checkedSum(total, totalOf(app));
        const auto line = quillane::rowOf(app).join(QStringLiteral(" | "));
        if (!there.removeOne(line)) {
            missing.append(line);
        }
    }
    check(missing.isEmpty(), QStringLiteral("not in the table: ") + missing.join(QStringLiteral("; ")));
    check(there.isEmpty(),
          QStringLiteral("in the table, but not on disk: ") + there.join(QStringLiteral("; ")));
    const auto seen = Visitor::words(window().content(LibrarySection::applications));
    checkSeen(seen, words(Formatting::counted(static_cast<std::int64_t>(m_shown.size()), "app")));
    checkSeen(seen, bytesText(total) + QStringLiteral(" total"));
    say(QStringLiteral("%1 rows, each with the size that its files have on disk: %2 in all.")
            .arg(m_shown.size())
            .arg(bytesText(total)));
}

void Tour::sortByEachColumn() {
    Visitor::clickHeader(table(), Column::kName);
    auto names = Visitor::column(table(), Column::kName);
    const bool ascending = std::ranges::is_sorted(names, [](const QString& a, const QString& b) {
        return Text::localizedStandardCompare(a.toStdString(), b.toStdString()) < 0;
    });
    check(ascending, QStringLiteral("a click on Name does not sort by name"));
    Visitor::clickHeader(table(), Column::kName);
    std::ranges::reverse(names);
    check(Visitor::column(table(), Column::kName).front() == names.front(),
          QStringLiteral("a second click on Name does not turn the order round"));
    for (const auto column : {Column::kLastUsed, Column::kArchitecture, Column::kVersion, Column::kSize}) {
        Visitor::clickHeader(table(), column);
        check(table()->model()->rowCount() == static_cast<int>(m_shown.size()),
              QStringLiteral("rows were lost while sorting"));
    }
    // Size, the largest first, as it was.
    if (Visitor::column(table(), Column::kName).front() !=
        shownName(std::ranges::max_element(m_shown, {}, totalOf)->name)) {
        Visitor::clickHeader(table(), Column::kSize);
    }
    check(Visitor::column(table(), Column::kName).front() ==
              shownName(std::ranges::max_element(m_shown, {}, totalOf)->name),
          QStringLiteral("sorting by size does not put the largest first"));
    say(QStringLiteral("Sorted by each column; the largest is %1.")
            .arg(Visitor::column(table(), Column::kName).front()));
}

void Tour::selectOne() {
    const auto* const app = expected(QStringLiteral("Tessel Studio"));
    if (app == nullptr) {
        check(false, QStringLiteral("the sample has no Tessel Studio"));
        return;
    }
    Visitor::click(table(), rowOf(shownName(app->name)), Column::kName);
    const auto seen = Visitor::words(window().detail(LibrarySection::applications));
    checkSeen(seen, shownName(app->name));
    checkSeen(seen, bytesText(totalOf(*app)));
    checkSeen(seen, bytesText(app->bundleBytes));
    checkSeen(seen, words(app->identifier.value_or("an identifier")));
    checkSeen(seen, QStringLiteral("Support Files (%1)").arg(app->leftovers.size()));
    for (const auto& leftover : app->leftovers) {
        checkSeen(seen, shownName(FileURL(leftover.path).lastPathComponent()));
    }
    take(QStringLiteral("applications-selected"));
    say(QStringLiteral("%1: %2, of which the bundle is %3.")
            .arg(words(app->name), bytesText(totalOf(*app)), bytesText(app->bundleBytes)));
}

void Tour::selectSeveral() {
    const QStringList names{QStringLiteral("Tessel Studio"), QStringLiteral("Pinion 3D"),
                            QStringLiteral("Brambleworks"), QStringLiteral("Sorrel")};
    Bytes total = 0;
    for (const auto& name : names) {
        const auto* const app = expected(name);
        check(app != nullptr, QStringLiteral("the sample has no ") + name);
        total = checkedSum(total, app == nullptr ? 0 : totalOf(*app));
        Visitor::click(table(), rowOf(name), Column::kName,
                       name == names.front() ? Qt::NoModifier : Qt::ControlModifier);
    }
    const auto seen = Visitor::words(window().detail(LibrarySection::applications));
    checkSeen(seen, QStringLiteral("4 apps selected"));
    checkSeen(seen, bytesText(total));
    take(QStringLiteral("applications-multi"));
    say(QStringLiteral("Four selected: %1 together.").arg(bytesText(total)));
}

void Tour::search() {
    Visitor::press(&window(), Qt::Key_F, Qt::ControlModifier);
    Visitor::type(&window(), QStringLiteral("harbour"));
    const auto matches = std::ranges::count_if(m_shown, [](const ExpectedApp& app) {
        return Text::localizedCaseInsensitiveContains(app.name, "harbour") ||
               Text::localizedCaseInsensitiveContains(app.identifier.value_or(""), "harbour");
    });
    check(table()->model()->rowCount() == matches, QStringLiteral("a search for harbour shows other rows"));
    take(QStringLiteral("applications-search"));
    Visitor::press(&window(), Qt::Key_A, Qt::ControlModifier);
    Visitor::press(&window(), Qt::Key_Delete);
    check(table()->model()->rowCount() == static_cast<int>(m_shown.size()),
          QStringLiteral("an empty search does not show everything again"));
    say(QStringLiteral("A search for harbour finds %1.").arg(matches));
}

void Tour::shrink() {
    const QSize before = window().window()->size();
    window().window()->resize(ContentView::kMinimumSize);
    Visitor::settle();
    check(table()->horizontalScrollBar()->maximum() == 0,
          QStringLiteral("the smallest window scrolls sideways"));
    take(QStringLiteral("applications-min-window"));
    window().window()->resize(before);
    Visitor::settle();
    say(QStringLiteral("The smallest window shows every column."));
}

void Tour::switchToDark() {
    Look::setDark(true);
    take(QStringLiteral("applications-dark"));
    Look::setDark(false);
    Visitor::settle();
}

void Tour::compareOrphans() {
    struct Group {
        Bytes bytes = 0;
        int files = 0;
        std::set<QString> titles; // what it may be called
    };
    std::map<std::string, Group> groups;
    Bytes total = 0;
    for (const auto& orphan : m_mac.expectedOrphans(m_hostFolder)) {
        auto& group = groups[orphan.vendor];
        group.bytes = checkedSum(group.bytes, orphan.bytes);
        ++group.files;
        group.titles.insert(words(orphan.identifier));
        total = checkedSum(total, orphan.bytes);
    }
    const auto* const rows = table(LibrarySection::orphans)->model();
    check(rows->rowCount() == static_cast<int>(groups.size()),
          QStringLiteral("%1 groups of orphans").arg(rows->rowCount()));
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto text = [&](int column) { return rows->index(row, column).data().toString(); };
        const auto found = std::ranges::find_if(
            groups, [&](const auto& entry) { return entry.second.titles.contains(text(0)); });
        check(found != groups.end(), QStringLiteral("no orphan on disk: ") + text(0));
        check(found == groups.end() || (text(1) == bytesText(found->second.bytes) &&
                                        text(2) == QString::number(found->second.files)),
              QStringLiteral("%1 does not take %2 in %3 files").arg(text(0), text(1), text(2)));
    }
    const auto seen = Visitor::words(window().content(LibrarySection::orphans));
    checkSeen(seen, words(Formatting::counted(static_cast<std::int64_t>(groups.size()), "dead app")));
    checkSeen(seen, bytesText(total) + QStringLiteral(" reclaimable"));
    say(QStringLiteral("%1 removed applications left %2 behind, as on disk.")
            .arg(groups.size())
            .arg(bytesText(total)));
}

void Tour::compareLocations() {
    QStringList expected;
    Bytes total = 0;
    Bytes swept = 0;
    for (const auto& location : m_mac.expectedLocations(m_hostFolder)) {
        expected << words(location.tool + " | " + location.kind + " | ") + bytesText(location.bytes);
        total = checkedSum(total, location.bytes);
        swept = checkedSum(swept, location.safeToSweep ? location.bytes : 0);
    }
    QStringList there;
    const auto* const rows = table(LibrarySection::developer)->model();
    for (int row = 0; row < rows->rowCount(); ++row) {
        const auto text = [&](int column) { return rows->index(row, column).data().toString(); };
        there << QStringList{text(0), text(1), text(2)}.join(QStringLiteral(" | "));
    }
    expected.sort();
    there.sort();
    check(there == expected, QStringLiteral("the developer's locations are not those on disk: ") +
                                 there.join(QStringLiteral("; ")));
    const auto seen = Visitor::words(window().content(LibrarySection::developer));
    checkSeen(seen, words(Formatting::counted(expected.size(), "location")));
    checkSeen(seen, bytesText(total));
    checkSeen(seen, bytesText(swept) + QStringLiteral(" in sweep"));
    say(QStringLiteral("%1 developer locations hold %2, of which a cleanup takes %3, as on disk.")
            .arg(expected.size())
            .arg(bytesText(total), bytesText(swept)));
}

void Tour::compareStaying(const std::vector<std::string>& paths) {
    for (const auto& path : paths) {
        check(std::filesystem::exists(hostPath(FileURL(path))),
              QStringLiteral("gone, though it was kept: ") + shownName(path));
    }
}

void Tour::removeAndPutBack(LibrarySection section, const QString& name, const Preparation& prepare,
                            int column) {
    window().showSection(section);
    Visitor::settle();
    const auto rowCount = table(section)->model()->rowCount();
    const auto row = Visitor::column(table(section), column).indexOf(name);
    check(row >= 0, QStringLiteral("not in its table: ") + name);
    if (row < 0) {
        return;
    }
    const auto treeBefore = treeNow();
    const auto trashBefore = itemsInTrash();
    Visitor::click(table(section), static_cast<int>(row), column);
    const auto staying = prepare ? prepare() : std::vector<std::string>();
    take(words(rawValue(section)).toLower() + QStringLiteral("-selected"));
    Visitor::push(window().detail(section)->findChild<DetailPane*>()->removeButton());
    auto* const sheet = window().removalSheet();
    if (sheet == nullptr) {
        check(false, QStringLiteral("the review of %1 did not open").arg(name));
        return;
    }
    const auto entries = sheet->model().review().included();
    check(!entries.empty(), QStringLiteral("there is nothing to review for ") + name);
    takeOf(*sheet, words(rawValue(section)).toLower().replace(QLatin1Char(' '), QLatin1Char('-')) +
                       QStringLiteral("-review"));
    Visitor::press(sheet, Qt::Key_Return);
    check(Visitor::waitUntil([&] { return sheet->stage() == SweepPreviewSheet::Stage::done; }),
          QStringLiteral("the removal of %1 did not end").arg(name));
    compareWithTrash(entries, trashBefore);
    compareStaying(staying);
    Visitor::press(sheet, Qt::Key_Return);
    Visitor::settle();
    check(window().isActiveWindow(), QStringLiteral("the keyboard did not come back from the review"));
    check(table(section)->model()->rowCount() == rowCount - 1,
          QStringLiteral("%1 is still in its table").arg(name));
    say(QStringLiteral("Removed %1: %2 moved, found in the Trash on disk.").arg(name).arg(entries.size()));

    window().showSection(LibrarySection::overview);
    Visitor::settle();
    if (auto* const screen = overview()) {
        putBack(*screen, treeBefore);
    }
    window().showSection(section); // a table is drawn anew when it comes to sight
    Visitor::settle();
    check(Visitor::waitUntil([&] { return table(section)->model()->rowCount() == rowCount; }),
          QStringLiteral("%1 is not back in its table").arg(name));
    Visitor::settle();
}

void Tour::cleanAndPutBack() {
    window().showSection(LibrarySection::overview);
    Visitor::settle();
    auto* const screen = overview();
    if (screen == nullptr) {
        return;
    }
    const auto treeBefore = treeNow();
    const auto trashBefore = itemsInTrash();
    Visitor::push(screen->hero()->button());
    auto* const sheet = screen->review();
    if (sheet == nullptr) {
        check(false, QStringLiteral("the review did not open"));
        return;
    }
    takeOf(*sheet, QStringLiteral("review"));
    const auto all = sheet->model().review().entries();
    Visitor::press(sheet, Qt::Key_Space); // the row that has the focus stays
    const auto included = sheet->model().review().included();
    check(included.size() + 1 == all.size(), QStringLiteral("Space does not untick one row"));
    takeOf(*sheet, QStringLiteral("review-one-kept"));
    const auto kept = std::ranges::find_if(
        all, [&](const SweepEntry& entry) { return std::ranges::find(included, entry) == included.end(); });
    Visitor::press(sheet, Qt::Key_Return);
    check(Visitor::waitUntil([&] { return sheet->stage() == SweepPreviewSheet::Stage::done; }),
          QStringLiteral("the sweep did not end"));
    takeOf(*sheet, QStringLiteral("done"));
    if (kept != all.end()) {
        compareWithTrash(included, trashBefore);
        check(std::filesystem::exists(hostPath(kept->url)),
              QStringLiteral("gone, though it was kept: ") + shownName(kept->url.path()));
        say(QStringLiteral("Reviewed %1 rows, kept %2, and found the others in the Trash on disk.")
                .arg(all.size())
                .arg(shownName(kept->url.lastPathComponent())));
    }
    Visitor::press(sheet, Qt::Key_Return);
    take(QStringLiteral("overview-cleaned"));
    putBack(*screen, treeBefore);
}

std::size_t Tour::itemsInTrash() const {
    namespace fs = std::filesystem;
    std::error_code missing;
    const fs::directory_iterator items(m_hostFolder + std::string(SampleMac::kHome) + "/.Trash", missing);
    return static_cast<std::size_t>(std::distance(fs::begin(items), fs::end(items)));
}

std::string Tour::treeNow() const {
    return fingerprint(m_hostFolder);
}

void Tour::compareWithTrash(const std::vector<SweepEntry>& moved, std::size_t trashBefore) {
    namespace fs = std::filesystem;
    for (const auto& entry : moved) {
        check(!fs::exists(fs::symlink_status(hostPath(entry.url))),
              QStringLiteral("still in its place: ") + shownName(entry.url.path()));
    }
    const auto arrived = itemsInTrash() - trashBefore;
    check(arrived == moved.size(), QStringLiteral("%1 items arrived in the Trash").arg(arrived));
}

void Tour::putBack(OverviewView& screen, const std::string& treeBefore) {
    auto& library = m_app.library();
    Visitor::push(screen.putBackCard()->putBackButton());
    check(Visitor::waitUntil([&] { return window().putBack()->alert() != nullptr; }),
          QStringLiteral("the last cleanup was not put back"));
    if (auto* const alert = window().putBack()->alert()) {
        takeOf(*alert, QStringLiteral("put-back-finished"));
        Visitor::press(alert, Qt::Key_Return);
    }
    check(!library.lastOperation->has_value(), QStringLiteral("there is still something to put back"));
    check(Visitor::waitUntil([&] { return library.phase->kind == AppLibrary::Phase::Kind::ready; }),
          QStringLiteral("the scan after the put back did not end"));
    Visitor::settle();
    check(treeNow() == treeBefore, QStringLiteral("the tree on disk is not what it was"));
    say(QStringLiteral("Put back: every file was compared with what it was before."));
}

ContentView& Tour::window() const {
    return *m_app.window();
}

QTreeView* Tour::table(LibrarySection section) const {
    return window().content(section)->findChild<TableView*>();
}

QTreeView* Tour::table() const {
    return table(LibrarySection::applications);
}

OverviewView* Tour::overview() const {
    auto* const content = window().content(LibrarySection::overview);
    return qobject_cast<OverviewView*>(content) != nullptr ? qobject_cast<OverviewView*>(content)
                                                           : content->findChild<OverviewView*>();
}

const ExpectedApp* Tour::expected(const QString& name) const {
    const auto found = std::ranges::find(m_shown, name.toStdString(), &ExpectedApp::name);
    return found == m_shown.end() ? nullptr : &*found;
}

int Tour::rowOf(const QString& name) const {
    return static_cast<int>(Visitor::column(table(), Column::kName).indexOf(name));
}

void Tour::take(const QString& name) {
    QString file = name;
    file.replace(QLatin1Char(' '), QLatin1Char('-'));
    check(Visitor::picture(&window(), m_pictures + QLatin1Char('/') + file + QStringLiteral(".png")),
          QStringLiteral("the picture %1 could not be written").arg(file));
}

void Tour::takeOf(QWidget& sheet, const QString& name) {
    check(Visitor::picture(&sheet, m_pictures + QLatin1Char('/') + name + QStringLiteral(".png")),
          QStringLiteral("the picture %1 could not be written").arg(name));
}

void Tour::say(const QString& line) const {
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

void Tour::check(bool holds, const QString& what) {
    if (!holds) {
        m_complaints.append(what);
    }
}

void Tour::checkSeen(const QStringList& seen, const QString& words) {
    check(seen.contains(words), QStringLiteral("not on the screen: ") + words);
}

} // namespace quillane
