// The person's own files: each lens and the copies against the disk, a document found by its words, a picture looked
// at, and a copy kept that is not the suggested one.
#include "AppLibrary.h"
#include "Components/ShownText.h"
#include "Duplicates/CopiesList.h"
#include "Duplicates/DuplicateDetailView.h"
#include "Formatting.h"
#include "Preview/QuickLookPanel.h"
#include "QuillaneApp.h"
#include "Shell/ContentView.h"
#include "Shell/StandingScreens.h"
#include "Tour.h"
#include "Visitor.h"
#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QLineEdit>
#include <QTreeView>
#include <algorithm>

namespace quillane {
namespace {

const QString kBetween = QStringLiteral(" | ");

QString bytesText(Bytes bytes) {
    return words(Formatting::byteCount(bytes));
}

// What a row must say, in the order of the columns but without the date, which goes on while we look.
QString rowOf(const UserFile& file) {
    return QStringList{shownName(file.name()), words(rawValue(file.kind)), bytesText(file.bytes)}.join(
        kBetween);
}

// The first columns of every row, sorted.
QStringList rowsOf(const QTreeView* table, int columns) {
    QStringList rows;
    const auto* const model = table->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < columns; ++column) {
            cells << model->index(row, column).data().toString();
        }
        rows << cells.join(kBetween);
    }
    rows.sort();
    return rows;
}

QString nameOf(const std::string& path) {
    return shownName(FileURL(path).lastPathComponent());
}

} // namespace

bool Tour::stands(LibrarySection section) const {
    const auto standing = standingScreens();
    return std::ranges::find(standing, section, &StandingScreen::section) != standing.end();
}

void Tour::visitFiles() {
    if (!stands(LibrarySection::files)) {
        return;
    }
    window().showSection(LibrarySection::files);
    Visitor::settle();
    const auto expected = m_mac.expectedFiles(m_hostFolder);
    compareLens(QStringLiteral("Large & Old"), expected.large);
    compareLens(QStringLiteral("Screenshots"), expected.screenshots);
    lookAtPicture();
    findByWords();
    compareLens(QStringLiteral("Installers"), expected.installers);
    removeAndPutBack(LibrarySection::files, QStringLiteral("Quarry Notes.dmg"));
}

void Tour::chooseLens(const QString& lens) {
    auto* const segment =
        qobject_cast<QAbstractButton*>(Visitor::named(window().content(LibrarySection::files), lens));
    check(segment != nullptr, QStringLiteral("there is no lens ") + lens);
    if (segment != nullptr) {
        Visitor::push(segment);
    }
    check(Visitor::waitUntil([this] { return !*m_app.library().isLoadingFiles; }),
          QStringLiteral("the lens %1 did not load").arg(lens));
    Visitor::settle();
}

void Tour::compareLens(const QString& lens, const std::vector<UserFile>& expected) {
    chooseLens(lens);
    QStringList rows;
    Bytes total = 0;
    for (const auto& file : expected) {
        rows << quillane::rowOf(file);
        total = checkedSum(total, file.bytes);
    }
    rows.sort();
    const auto there = rowsOf(table(LibrarySection::files), 3);
    check(there == rows,
          QStringLiteral("%1 does not show what is on disk: %2").arg(lens, there.join(QStringLiteral("; "))));
    const auto seen = Visitor::words(window().content(LibrarySection::files));
    checkSeen(seen, words(Formatting::counted(static_cast<std::int64_t>(expected.size()), "file")));
    checkSeen(seen, bytesText(total) + QStringLiteral(" total"));
    take(QStringLiteral("files-") + lens.toLower().remove(QStringLiteral(" &")));
    say(QStringLiteral("%1: %2 files, %3 on disk.").arg(lens).arg(expected.size()).arg(bytesText(total)));
}

void Tour::lookAtPicture() {
    const auto name = QStringLiteral("which lamp.png");
    auto* const files = table(LibrarySection::files);
    const auto row = Visitor::column(files, 0).indexOf(name);
    check(row >= 0, QStringLiteral("not among the screenshots: ") + name);
    if (row < 0) {
        return;
    }
    Visitor::click(files, static_cast<int>(row), 0);
    Visitor::waitUntil([this] { return !Visitor::isWaiting(&window()); });
    take(QStringLiteral("files-screenshot-selected"));
    Visitor::press(&window(), Qt::Key_Space);
    comparePanel(name, QStringLiteral("quick-look"));
}

void Tour::comparePanel(const QString& name, const QString& picture) {
    auto& panel = *window().quickLook();
    const auto isShown = [&] { return panel.content() == QuickLookPanel::Content::picture; };
    check(Visitor::waitUntil(isShown, 20), QStringLiteral("the panel shows no picture of ") + name);
    check(panel.isVisible() && panel.windowTitle() == name,
          QStringLiteral("the panel is not called ") + name);
    takeOf(panel, picture);
    Visitor::press(&panel, Qt::Key_Space);
    check(!panel.isVisible() && !*window().state().quickLookURL,
          QStringLiteral("the space bar does not close the panel"));
    say(QStringLiteral("Looked at %1 in a panel of its own.").arg(name));
}

void Tour::findByWords() {
    chooseLens(QStringLiteral("Search"));
    auto* const field = window().content(LibrarySection::files)->findChild<QLineEdit*>();
    check(field != nullptr, QStringLiteral("there is no field for words"));
    if (field == nullptr) {
        return;
    }
    for (const auto& [text, paths] : m_mac.expectedFiles(m_hostFolder).searches) {
        field->setFocus();
        field->selectAll();
        Visitor::type(&window(), words(text));
        Visitor::press(&window(), Qt::Key_Return);
        check(Visitor::waitUntil([this] { return !*m_app.library().isLoadingFiles; }),
              QStringLiteral("the search for %1 did not end").arg(words(text)));
        Visitor::settle();
        QStringList names;
        std::ranges::transform(paths, std::back_inserter(names), nameOf);
        names.sort();
        const auto there = paths.empty() ? QStringList() : rowsOf(table(LibrarySection::files), 1);
        check(there == names && m_app.library().files->size() == paths.size(),
              QStringLiteral("a search for %1 finds %2").arg(words(text), there.join(QStringLiteral("; "))));
        if (text == "kestrel") {
            take(QStringLiteral("files-found-by-words"));
            say(QStringLiteral("A search for kestrel finds %1, by what is written on its third page.")
                    .arg(there.join(QStringLiteral("; "))));
        }
    }
}

void Tour::visitDuplicates() {
    if (!stands(LibrarySection::duplicates)) {
        return;
    }
    window().showSection(LibrarySection::duplicates);
    check(Visitor::waitUntil([this] { return !*m_app.library().isLoadingDuplicates; }),
          QStringLiteral("the copies were not compared"));
    Visitor::settle();
    compareDuplicates();
    lookAtCopy(QStringLiteral("lake.jpg"));
    lookAtCopy(QStringLiteral("Lease (signed).pdf"));
    removeAndPutBack(LibrarySection::duplicates, QStringLiteral("rain.wav"),
                     [this] { return chooseAnotherCopy(); });
}

void Tour::compareDuplicates() {
    const auto groups = m_mac.expectedFiles(m_hostFolder).duplicates;
    QStringList rows;
    Bytes wasted = 0;
    for (const auto& group : groups) {
        const auto others = static_cast<Bytes>(group.paths.size() - 1);
        wasted = checkedSum(wasted, others * group.bytesEach);
        rows << QStringList{nameOf(group.keeper), QString::number(group.paths.size()),
                            bytesText(group.bytesEach), bytesText(others * group.bytesEach)}
                    .join(kBetween);
    }
    rows.sort();
    const auto there = rowsOf(table(LibrarySection::duplicates), 4);
    check(there == rows,
          QStringLiteral("the copies are not those on disk: ") + there.join(QStringLiteral("; ")));
    const auto seen = Visitor::words(window().content(LibrarySection::duplicates));
    checkSeen(seen, words(Formatting::counted(static_cast<std::int64_t>(groups.size()), "group")));
    checkSeen(seen, bytesText(wasted) + QStringLiteral(" recoverable by keeping one of each"));
    say(QStringLiteral("%1 groups of copies waste %2, as on disk.")
            .arg(groups.size())
            .arg(bytesText(wasted)));
}

void Tour::lookAtCopy(const QString& name) {
    auto* const groups = table(LibrarySection::duplicates);
    const auto row = Visitor::column(groups, 0).indexOf(name);
    check(row >= 0, QStringLiteral("not among the copies: ") + name);
    if (row < 0) {
        return;
    }
    Visitor::click(groups, static_cast<int>(row), 0);
    auto* const copies = window().detail(LibrarySection::duplicates)->findChild<CopiesList*>();
    const auto first = copies->model()->index(0, 0);
    Visitor::click(copies->viewport(), copies->placeOf(first, CopiesList::Part::Look).center());
    comparePanel(name, QStringLiteral("quick-look-") + name.left(4).toLower());
}

std::vector<std::string> Tour::chooseAnotherCopy() {
    auto* const pane = window().detail(LibrarySection::duplicates)->findChild<DuplicateDetailView*>();
    const auto copies = pane->shownCopies();
    const auto suggested = pane->chosen();
    take(QStringLiteral("duplicates-suggested"));
    for (int row = 0; row < static_cast<int>(copies.size()); ++row) {
        const auto& copy = copies[static_cast<std::size_t>(row)];
        if (copy == suggested) {
            continue;
        }
        auto* const list = pane->copies();
        const auto index = list->model()->index(row, 0);
        list->scrollTo(index);
        Visitor::click(list->viewport(), list->placeOf(index, CopiesList::Part::Choice).center());
        check(pane->chosen() == copy, QStringLiteral("a click does not choose ") + shownName(copy.path()));
        say(QStringLiteral("Of %1 copies %2 is suggested; %3 is kept.")
                .arg(copies.size())
                .arg(suggested ? shownName(suggested->path()) : QString(), shownName(copy.path())));
        return {copy.path()};
    }
    check(false, QStringLiteral("there is no other copy to keep"));
    return {};
}

} // namespace quillane
