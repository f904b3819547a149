// What starts by itself: told as it lies on disk, stopped until the next login, removed and put back.
#include "AppLibrary.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Formatting.h"
#include "QuillaneApp.h"
#include "Shell/ContentView.h"
#include "Startup/StartupDetail.h"
#include "Startup/StartupDetailView.h"
#include "Startup/StartupTableModel.h"
#include "Tables/TableView.h"
#include "Tour.h"
#include "Visitor.h"
#include <algorithm>

namespace quillane {
namespace {

using Column = StartupTableModel::Column;

bool isAtHome(const ExpectedStartupItem& item) {
    return item.path.starts_with(SampleMac::kHome);
}

// What its row must say, the mark of what is loaded in its words.
QString lineOf(const ExpectedStartupItem& item) {
    const auto loaded = !item.isLoaded   ? QStringLiteral("—")
                        : *item.isLoaded ? QStringLiteral("Running under launchd now")
                                         : QStringLiteral("Not loaded");
    return QStringList{
        words(rawValue(item.health)), shownName(item.label), shownName(item.owner.value_or("")),
        words(rawValue(item.kind)),   words(item.schedule),  loaded}
        .join(QStringLiteral(" | "));
}

QString lineOf(const QAbstractItemModel& rows, int row) {
    QStringList cells;
    for (int column = Column::kStatus; column <= Column::kLoaded; ++column) {
        const auto index = rows.index(row, column);
        const auto spoken = index.data(Qt::AccessibleTextRole).toString();
        cells << (spoken.isEmpty() ? index.data().toString() : spoken);
    }
    return cells.join(QStringLiteral(" | "));
}

} // namespace

void Tour::visitStartup() {
    window().showSection(LibrarySection::startup);
    check(Visitor::waitUntil([&] { return !*m_app.library().isLoadingStartup; }),
          QStringLiteral("launchd was not read"));
    Visitor::settle();
    compareStartup();
    stopUntilLogin();
    const auto expected = m_mac.expectedStartupItems();
    const auto broken = std::ranges::find_if(expected, [](const ExpectedStartupItem& item) {
        return item.health == StartupItem::Health::broken && isAtHome(item);
    });
    check(broken != expected.end(), QStringLiteral("the sample has no broken item at home"));
    if (broken != expected.end()) {
        removeAndPutBack(LibrarySection::startup, shownName(broken->label), {}, Column::kLabel);
    }
}

void Tour::compareStartup() {
    const auto expected = m_mac.expectedStartupItems();
    const auto* const rows = table(LibrarySection::startup)->model();
    QStringList there;
    for (int row = 0; row < rows->rowCount(); ++row) {
        there << lineOf(*rows, row);
    }
    QStringList missing;
    for (const auto& item : expected) {
        if (!there.removeOne(lineOf(item))) {
            missing << lineOf(item);
        }
    }
    check(missing.isEmpty(), QStringLiteral("not in Startup: ") + missing.join(QStringLiteral("; ")));
    check(there.isEmpty(),
          QStringLiteral("in Startup, but not on disk: ") + there.join(QStringLiteral("; ")));
    const auto problems = std::ranges::count_if(
        expected, [](const ExpectedStartupItem& item) { return item.health != StartupItem::Health::ok; });
    const auto seen = Visitor::words(window().content(LibrarySection::startup));
    checkSeen(seen, words(Formatting::counted(static_cast<std::int64_t>(expected.size()), "item")));
    checkSeen(seen, words(Formatting::counted(problems, "problem")));
    say(QStringLiteral("%1 startup items, %2 with a problem.").arg(expected.size()).arg(problems));
}

void Tour::stopUntilLogin() {
    const auto expected = m_mac.expectedStartupItems();
    const auto running = std::ranges::find_if(expected, [](const ExpectedStartupItem& item) {
        return item.kind == StartupItem::Kind::agent && isAtHome(item) && item.isLoaded == true;
    });
    if (running == expected.end()) {
        check(false, QStringLiteral("the sample has nothing that can be stopped"));
        return;
    }
    auto* const rows = table(LibrarySection::startup);
    const auto label = shownName(running->label);
    const auto row = [&] { return static_cast<int>(Visitor::column(rows, Column::kLabel).indexOf(label)); };
    const auto state = [&] {
        return rows->model()->index(row(), Column::kLoaded).data(Qt::AccessibleTextRole).toString();
    };
    Visitor::click(rows, row(), Column::kLabel);
    auto* const pane = window().detail(LibrarySection::startup)->findChild<StartupDetailView*>();
    check(pane->stopButton()->isVisible(), QStringLiteral("%1 can't be stopped").arg(label));
    Visitor::push(pane->stopButton());
    check(Visitor::waitUntil([&] { return state() == QLatin1String("Not loaded"); }),
          QStringLiteral("%1 goes on").arg(label));
    Visitor::settle();
    check(!pane->stopButton()->isVisible(), QStringLiteral("%1 can be stopped again").arg(label));
    checkSeen(Visitor::words(pane), QStringLiteral("No"));
    take(QStringLiteral("startup-stopped"));
    say(QStringLiteral("Stopped %1 until the next login; it stays in the list.").arg(label));
}

} // namespace quillane
