#include "Tour.h"
#include "AppLibrary.h"
#include "AppTableModel.h"
#include "ApplicationsTable.h"
#include "ContentView.h"
#include "Formatting.h"
#include "Look.h"
#include "QuillaneApp.h"
#include "Screen.h"
#include "SearchField.h"
#include "ShownText.h"
#include "TableView.h"
#include "TextComparison.h"
#include "Visitor.h"
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <utility>

namespace quillane {
namespace {

using Column = AppTableModel::Column;

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

} // namespace

Tour::Tour(QuillaneApp& app, const SampleMac& mac, std::string hostFolder, QString pictures)
    : m_app(app)
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
    checkSeen(seen, words(*app->identifier));
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

ContentView& Tour::window() const {
    return *m_app.window();
}

QTreeView* Tour::table() const {
    return window().content(LibrarySection::applications)->findChild<TableView*>();
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
