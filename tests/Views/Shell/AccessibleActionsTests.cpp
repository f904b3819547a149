#include "Applications/AppDetailView.h"
#include "Applications/ApplicationsDetail.h"
#include "Applications/MultiSelectionSummary.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/SidebarView.h"
#include "Duplicates/DuplicateDetailView.h"
#include "Duplicates/DuplicatesDetail.h"
#include "Formatting.h"
#include "Overview/CategoryRow.h"
#include "Overview/Hero.h"
#include "Overview/OverviewView.h"
#include "Review/FailuresView.h"
#include "Review/SweepPreviewSheet.h"
#include "Review/SweepReviewList.h"
#include "Review/SweepReviewModel.h"
#include "Review/SweepReviewStage.h"
#include "SectionRecords.h"
#include "Shell/Sidebar.h"
#include "Tables/SectionTable.h"
#include "Tables/TableView.h"
#include "WindowTest.h"
#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <algorithm>

using namespace quillane;

namespace {

InstalledApp withCache(const std::string& name, Bytes bytes) {
    auto app = measuredApp(name, 1'000'000);
    app.leftovers = {leftover("/Users/alex/Library/Caches/" + name, "Caches", bytes)};
    app.leftovers.front().isCache = true;
    return app;
}

// The window as an assistive tool works it: by the actions of what it meets. What came of one is asked of the
// model behind it, as a control may well show what nobody has heard of.
class AccessibleActions : public WindowTest {
  protected:
    void openFilled(LibrarySection section) {
        startsIn = section;
        library.orphans = {orphan("com.sketch", "com.sketch", 900'000),
                           orphan("fm.tempo", "fm.tempo", 600'000),
                           orphan("app.inkwell", "app.inkwell", 300'000)};
        library.developerCaches = {devCache("Xcode", "Derived data", 500'000),
                                   devCache("npm", "Package cache", 400'000),
                                   devCache("Gradle", "Dependencies", 300'000)};
        library.duplicates = {
            copies("a1", 3'000'000, {copyAt("Movies/Tour.mov"), copyAt("Downloads/Tour.mov")}),
            copies("b2", 2'000'000, {copyAt("Music/Mix.wav"), copyAt("Downloads/Mix.wav")}),
            copies("c3", 1'000'000, {copyAt("Documents/Lease.pdf"), copyAt("Downloads/Lease.pdf")})};
        library.recentUninstalls = {
            {"Ostrich", "com.ostrich", clock.now(), {{FileURL("/a"), "Caches", 1'000, true}}},
            {"Penguin", std::nullopt, clock.now(), {}}};
        openReady(
            {withCache("Alder", 3'000'000), withCache("Birch", 2'000'000), withCache("Cedar", 1'000'000)});
    }
    static QAccessibleInterface* met(QWidget& widget) {
        return QAccessible::queryAccessibleInterface(&widget);
    }
    void act(QAccessibleInterface* on, const QString& action) {
        ASSERT_NE(on, nullptr);
        ASSERT_NE(on->actionInterface(), nullptr) << qPrintable(on->text(QAccessible::Name));
        ASSERT_TRUE(on->actionInterface()->actionNames().contains(action))
            << qPrintable(action + " of " + on->text(QAccessible::Name));
        on->actionInterface()->doAction(action);
        turn();
    }
    void toggle(QAccessibleInterface* what) { act(what, QAccessibleActionInterface::toggleAction()); }
    // A button that is pressed so stays down for a moment, as one that is clicked does.
    void press(QAbstractButton& button) {
        bool isClicked = false;
        QObject::connect(&button, &QAbstractButton::clicked, window.get(), [&] { isClicked = true; });
        act(met(button), QAccessibleActionInterface::pressAction());
        EXPECT_TRUE(QTest::qWaitFor([&] { return isClicked; }));
        turn();
    }

    OverviewView& overview() const {
        return *qobject_cast<OverviewView*>(window->content(LibrarySection::overview));
    }
    QStringList planned() const {
        QStringList paths;
        for (const auto& row : library.fullPlan()) {
            paths << QString::fromStdString(row.url.path());
        }
        return paths;
    }
    SweepPreviewSheet& sheet() const { return *window->removalSheet(); }
    const SweepReview& review() const { return sheet().model().review(); }
    SweepReviewList& reviewList() const { return *sheet().reviewStage()->list(); }
    QAccessibleInterface* reviewed(int category, int row) const {
        auto* const group = met(reviewList())->child(category);
        return group != nullptr ? group->child(row) : nullptr;
    }
    void openReview(int apps = 2) {
        openFilled(LibrarySection::applications);
        std::vector<InstalledApp> going;
        for (int i = 0; i < apps; ++i) {
            going.push_back(withCache("App " + std::to_string(i), 1'000'000));
        }
        window->presentRemoval(library.removalForApps(going));
        QApplication::setActiveWindow(window->removalSheet());
        turn();
    }
};

} // namespace

// The Overview

TEST_F(AccessibleActions, TogglingACategoryTakesItOutOfTheCleanupAndPutsItBack) {
    openFilled(LibrarySection::overview);
    for (auto* const row : overview().rows()) {
        const auto category = row->category();
        const bool before = library.sweepSelection->contains(category);
        const auto plan = planned();
        toggle(met(*row->checkBox()));
        EXPECT_EQ(library.sweepSelection->contains(category), !before) << rawValue(category);
        EXPECT_EQ(row->checkBox()->isChecked(), !before);
        toggle(met(*row->checkBox()));
        EXPECT_EQ(library.sweepSelection->contains(category), before) << rawValue(category);
        EXPECT_EQ(planned(), plan);
    }
}

TEST_F(AccessibleActions, TheFigureAndTheReviewAreWithoutACategoryThatWasUnticked) {
    openFilled(LibrarySection::overview);
    const auto rows = overview().rows();
    const auto row = std::ranges::find(rows, SweepCategory::developer, &CategoryRow::category);
    const QString figure = overview().hero()->figure()->text();
    toggle(met(*(*row)->checkBox()));
    EXPECT_NE(overview().hero()->figure()->text(), figure);
    press(*overview().hero()->button());
    ASSERT_NE(overview().review(), nullptr);
    const auto& entries = overview().review()->model().review().entries();
    EXPECT_FALSE(entries.empty());
    EXPECT_TRUE(std::ranges::none_of(
        entries, [](const SweepEntry& entry) { return entry.category == SweepCategory::developer; }));
    overview().review()->reject();
}

TEST_F(AccessibleActions, ACategoryThatTheLibraryChangesIsShownAndNotTakenForTheUsers) {
    openFilled(LibrarySection::overview);
    auto* const row = overview().rows().front();
    int told = 0;
    QObject::connect(row, &CategoryRow::toggled, row, [&told] { ++told; });
    auto selection = *library.sweepSelection;
    const bool wasOn = selection.erase(row->category()) > 0;
    library.sweepSelection = selection;
    turn();
    ASSERT_TRUE(wasOn);
    EXPECT_FALSE(row->checkBox()->isChecked());
    EXPECT_EQ(told, 0);
}

// The sidebar

TEST_F(AccessibleActions, TogglingASectionGoesThere) {
    openFilled(LibrarySection::overview);
    auto* const sections = met(*window->sidebar()->list());
    const auto standing = standingScreens();
    for (std::size_t i = standing.size(); i-- > 0;) {
        toggle(sections->child(static_cast<int>(i)));
        EXPECT_EQ(window->state().section.get(), standing[i].section);
        EXPECT_EQ(window->sidebar()->list()->currentRow(), static_cast<int>(i)) << "arrows go on from there";
        EXPECT_TRUE(window->content(standing[i].section)->isVisible());
    }
}

TEST_F(AccessibleActions, TogglingTheSectionWhereOneIsStaysThere) {
    openFilled(LibrarySection::orphans);
    const int row = window->sidebar()->list()->currentRow();
    toggle(met(*window->sidebar()->list())->child(row));
    EXPECT_EQ(window->state().section.get(), LibrarySection::orphans);
    EXPECT_TRUE(window->sidebar()->list()->item(row)->isSelected());
}

// The tables

TEST_F(AccessibleActions, TogglingACellSelectsItsRowAndTogglingItAgainLetsItGo) {
    for (const auto section : {LibrarySection::applications, LibrarySection::orphans,
                               LibrarySection::developer, LibrarySection::duplicates}) {
        openFilled(section);
        const auto& state = window->state();
        const auto selected = [&] {
            return state.selection.get().size() + state.orphanSelection.get().size() +
                   state.developerSelection.get().size() + state.duplicateSelection.get().size();
        };
        auto* const cells = met(table())->tableInterface();
        const QStringList all = names();
        toggle(cells->cellAt(1, 1));
        EXPECT_EQ(selectedNames(), QStringList{all[1]});
        EXPECT_EQ(selected(), 1U);
        toggle(cells->cellAt(2, 0));
        EXPECT_EQ(selectedNames(), QStringList({all[1], all[2]}));
        EXPECT_EQ(selected(), 2U);
        toggle(cells->cellAt(1, 0));
        EXPECT_EQ(selectedNames(), QStringList{all[2]});
        EXPECT_EQ(selected(), 1U);
        close();
    }
}

TEST_F(AccessibleActions, PressingAHeadingThatHasTheFocusSortsByItsColumn) {
    openFilled(LibrarySection::applications);
    auto* const header = met(*table().header());
    EXPECT_FALSE(header->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()))
        << "there is no column yet to press on";
    act(header, QAccessibleActionInterface::setFocusAction());
    ASSERT_TRUE(table().header()->hasFocus());
    act(header, QAccessibleActionInterface::pressAction());
    EXPECT_EQ(window->state().sortOrder.get(), (std::vector<AppComparator>{{AppSortKey::totalBytes, false}}));
    QTest::keyClick(table().header(), Qt::Key_Left);
    act(header, QAccessibleActionInterface::pressAction());
    EXPECT_EQ(window->state().sortOrder.get(), (std::vector<AppComparator>{{AppSortKey::name, false}}));
}

TEST_F(AccessibleActions, WhatIsWrittenIntoTheSearchOfFilesIsSearchedFor) {
    openFilled(LibrarySection::files);
    library.setFilesMode(FilesMode::search);
    turn();
    QAccessibleInterface* field = nullptr;
    for (auto* const edit : window->content(LibrarySection::files)->findChildren<QLineEdit*>()) {
        if (edit->isVisible()) {
            field = met(*edit);
        }
    }
    ASSERT_NE(field, nullptr);
    field->editableTextInterface()->replaceText(0, 0, "invoice");
    EXPECT_EQ(library.fileSearchText.get(), "invoice");
    field->setText(QAccessible::Value, "receipt");
    EXPECT_EQ(library.fileSearchText.get(), "receipt");
}

// The panes

TEST_F(AccessibleActions, TogglingACopyKeepsItAndPressingTheButtonReviewsTheOthers) {
    openFilled(LibrarySection::duplicates);
    toggle(met(table())->tableInterface()->cellAt(0, 0));
    const auto* const pane = qobject_cast<DuplicatesDetail*>(window->detail(LibrarySection::duplicates));
    auto* const rows = met(*pane->one()->copies());
    ASSERT_EQ(rows->childCount(), 2);
    EXPECT_TRUE(rows->child(0)->state().checked) << "its path is the shorter one";
    toggle(rows->child(1));
    EXPECT_FALSE(rows->child(0)->state().checked);
    EXPECT_TRUE(rows->child(1)->state().checked);
    toggle(rows->child(1));
    EXPECT_TRUE(rows->child(1)->state().checked) << "one of them stays whatever is toggled";
    act(rows->child(0)->child(0), QAccessibleActionInterface::pressAction());
    EXPECT_EQ(window->state().quickLookURL.get(), FileURL("/Users/alex/Movies/Tour.mov"));
    press(*pane->one()->removeButton());
    ASSERT_NE(window->removalSheet(), nullptr);
    ASSERT_EQ(review().entries().size(), 1U);
    EXPECT_EQ(review().entries().front().url, FileURL("/Users/alex/Movies/Tour.mov"));
    sheet().reject();
}

TEST_F(AccessibleActions, PressingUninstallOpensTheReviewOfWhatIsSelected) {
    openFilled(LibrarySection::applications);
    click("Birch");
    turn();
    press(*detail().one()->uninstallButton());
    ASSERT_NE(window->removalSheet(), nullptr);
    EXPECT_EQ(review().entries().front().url, FileURL("/Applications/Birch.app"));
    sheet().reject();
    click("Cedar", Qt::ControlModifier);
    turn();
    press(*detail().several()->removeButton());
    ASSERT_NE(window->removalSheet(), nullptr);
    EXPECT_EQ(review().entries().size(), 4U);
}

// The review

TEST_F(AccessibleActions, AReviewIsAListOfCategoriesWithACheckBoxForEachRow) {
    openReview();
    auto* const list = met(reviewList());
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), "Items to review");
    ASSERT_EQ(list->childCount(), static_cast<int>(review().sections().size()));
    for (int i = 0; i < list->childCount(); ++i) {
        auto* const category = list->child(i);
        const auto& section = review().sections()[static_cast<std::size_t>(i)];
        EXPECT_EQ(category->role(), QAccessible::Grouping);
        EXPECT_EQ(category->parent(), list);
        EXPECT_EQ(list->indexOfChild(category), i);
        EXPECT_TRUE(
            category->text(QAccessible::Name).startsWith(QString::fromUtf8(rawValue(section.category))));
        EXPECT_EQ(category->actionInterface(), nullptr) << "a click does nothing there";
        ASSERT_EQ(category->childCount(), static_cast<int>(section.rows.size()));
        for (int j = 0; j < category->childCount(); ++j) {
            auto* const row = category->child(j);
            const auto& entry = review().entries()[section.rows[static_cast<std::size_t>(j)]];
            EXPECT_EQ(row->role(), QAccessible::CheckBox);
            EXPECT_EQ(row->parent(), category);
            EXPECT_EQ(category->indexOfChild(row), j);
            EXPECT_EQ(row->childCount(), 0);
            EXPECT_EQ(row->text(QAccessible::Name),
                      QString::fromStdString(entry.title + ", " + Formatting::byteCount(entry.bytes)));
            EXPECT_EQ(row->text(QAccessible::Description), QString::fromStdString(entry.subtitle));
            EXPECT_TRUE(row->state().checkable && row->state().checked);
        }
    }
    EXPECT_EQ(list->child(list->childCount()), nullptr);
    EXPECT_EQ(list->child(0), list->child(0)) << "one thing is met as one";
}

TEST_F(AccessibleActions, TogglingARowOfTheReviewTicksAndUnticksIt) {
    openReview();
    for (std::size_t s = 0; s < review().sections().size(); ++s) {
        const auto rows = review().sections()[s].rows;
        for (std::size_t r = 0; r < rows.size(); ++r) {
            auto* const row = reviewed(static_cast<int>(s), static_cast<int>(r));
            ASSERT_NE(row, nullptr);
            const auto included = review().includedCount();
            toggle(row);
            EXPECT_FALSE(review().isTicked(rows[r]));
            EXPECT_FALSE(row->state().checked);
            EXPECT_EQ(review().includedCount(), included - 1) << "and no other";
            toggle(row);
            EXPECT_TRUE(review().isTicked(rows[r]));
            EXPECT_TRUE(row->state().checked);
        }
    }
}

TEST_F(AccessibleActions, WhatWasUntickedSoStays) {
    openReview();
    const auto before = review().includedCount();
    toggle(reviewed(0, 0));
    press(*sheet().reviewStage()->mainButton());
    EXPECT_EQ(library.sweepTotal.get(), static_cast<int>(before) - 1);
}

TEST_F(AccessibleActions, ARowThatIsScrolledOutTogglesToo) {
    openReview(60);
    const auto& rows = review().sections()[0].rows;
    auto* const last = reviewed(0, static_cast<int>(rows.size()) - 1);
    ASSERT_NE(last, nullptr);
    EXPECT_TRUE(last->state().offscreen);
    toggle(last);
    EXPECT_FALSE(review().isTicked(rows.back()));
    act(last, QAccessibleActionInterface::setFocusAction());
    EXPECT_FALSE(last->state().offscreen);
    EXPECT_TRUE(reviewed(0, 0)->state().offscreen);
}

TEST_F(AccessibleActions, TheRowThatTheKeysActOnIsTheOneWithTheFocus) {
    openReview();
    reviewList().setFocus();
    const auto focused = [this] { return met(reviewList())->focusChild(); };
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(focused(), reviewed(0, 0));
    EXPECT_TRUE(reviewed(0, 0)->state().focused);
    QTest::keyClick(&reviewList(), Qt::Key_Down);
    EXPECT_EQ(focused(), reviewed(0, 1));
    EXPECT_FALSE(reviewed(0, 0)->state().focused);
    sheet().reviewStage()->cancelButton()->setFocus();
    EXPECT_EQ(focused(), nullptr);
}

TEST_F(AccessibleActions, WhatLiesUnderAPointOfTheReviewIsItsRow) {
    openReview();
    auto* const row = reviewed(0, 1);
    ASSERT_NE(row, nullptr);
    const QPoint middle = row->rect().center();
    EXPECT_EQ(met(reviewList())->childAt(middle.x(), middle.y()), row);
    EXPECT_EQ(row->parent()->childAt(middle.x(), middle.y()), row);
    EXPECT_EQ(met(reviewList())->childAt(-5, -5), nullptr);
}

TEST_F(AccessibleActions, OnceAReviewIsConfirmedItsRowsCantBeToggled) {
    openReview();
    auto* const row = reviewed(0, 0);
    ASSERT_NE(row, nullptr);
    press(*sheet().reviewStage()->mainButton());
    ASSERT_NE(sheet().stage(), SweepPreviewSheet::Stage::review);
    EXPECT_TRUE(row->actionInterface()->actionNames().isEmpty());
    row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(row->state().checked);
}

// After a sweep

TEST_F(AccessibleActions, TogglingTheDisclosureShowsWhatFailed) {
    openFilled(LibrarySection::overview);
    FailuresView view({{FileURL("/a"), "Nobody knows.", false}}, [] {});
    view.show();
    toggle(met(*view.disclosure()));
    EXPECT_TRUE(view.showingFailures());
    toggle(met(*view.disclosure()));
    EXPECT_FALSE(view.showingFailures());
}

// All of it

namespace {

// Of another control, with which assistive tools meet it as one.
bool isPartOfAControl(const QWidget& widget) {
    return widget.focusProxy() != nullptr || widget.objectName() == QLatin1String("qt_scrollarea_viewport") ||
           widget.inherits("QScrollBar");
}

// What can be seen in `root` and works, as a person meets it: nameless, or without the action of its kind.
QStringList mute(QWidget& root) {
    QStringList found;
    for (auto* const widget : root.findChildren<QWidget*>()) {
        auto* const button = qobject_cast<QAbstractButton*>(widget);
        const bool isControl = button != nullptr || widget->focusPolicy() != Qt::NoFocus;
        if (!isControl || !widget->isVisibleTo(&root) || !widget->isEnabled() || isPartOfAControl(*widget)) {
            continue;
        }
        auto* const met = QAccessible::queryAccessibleInterface(widget);
        const QString what = widget->metaObject()->className();
        if (met == nullptr || met->text(QAccessible::Name).isEmpty()) {
            found << what + " without a name";
        } else if (button != nullptr) {
            const QString wanted = button->isCheckable() ? QAccessibleActionInterface::toggleAction()
                                                         : QAccessibleActionInterface::pressAction();
            if (!met->actionInterface() || !met->actionInterface()->actionNames().contains(wanted)) {
                found << what + " " + met->text(QAccessible::Name) + " without " + wanted;
            }
            if (button->isCheckable() && qobject_cast<QPushButton*>(button) != nullptr) {
                found << what + " is a button that is pressed and can be checked";
            }
        }
    }
    return found;
}

} // namespace

TEST_F(AccessibleActions, NoControlOfAnySectionIsMute) {
    for (const auto& screen : standingScreens()) {
        library.trashState = TrashSweeper::State::refused(); // so that the banner is there too
        openFilled(screen.section);
        EXPECT_EQ(mute(*window), QStringList()) << rawValue(screen.section);
        if (auto* const section = qobject_cast<SectionTable*>(window->content(screen.section))) {
            section->table()->setCurrentIndex(section->table()->model()->index(0, 0));
            turn();
            EXPECT_EQ(mute(*window), QStringList()) << rawValue(screen.section) << " with one selected";
            section->table()->selectAll();
            turn();
            EXPECT_EQ(mute(*window), QStringList()) << rawValue(screen.section) << " with all selected";
        }
        close();
    }
}

TEST_F(AccessibleActions, NoControlOfTheReviewIsMuteInAnyOfItsStages) {
    openReview();
    EXPECT_EQ(mute(sheet()), QStringList());
    press(*sheet().reviewStage()->mainButton());
    EXPECT_EQ(mute(sheet()), QStringList());
    finish();
    ASSERT_EQ(sheet().stage(), SweepPreviewSheet::Stage::done);
    EXPECT_EQ(mute(sheet()), QStringList());
}
