#include "Components/AccessBanner.h"
#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/EmptyState.h"
#include "Components/FittedLabel.h"
#include "Components/Label.h"
#include "Components/ListRow.h"
#include "Components/Look.h"
#include "Components/Panel.h"
#include "Components/ProgressBar.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ResultAlertButtons.h"
#include "Components/SearchField.h"
#include "Components/Spinner.h"
#include "Components/Stat.h"
#include "Components/StatGrid.h"
#include "Components/StatusRow.h"
#include "Components/Symbols.h"
#include "Components/TabularText.h"
#include "Components/Tokens.h"
#include "Components/ToolbarRow.h"
#include "Components/ValueField.h"
#include "Gallery.h"
#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(StatGrid, ThreeStatisticsMakeTwoRowsAndTheSecondHasOneCell) {
    StatGrid grid({{"Total", "9 GB", true}, {"Bundle", "2 GB", false}, {"Support Files", "7 GB", false}});
    EXPECT_EQ(grid.rowCount(), 2);
    const auto* layout = qobject_cast<QGridLayout*>(grid.layout());
    ASSERT_NE(layout->itemAtPosition(0, 1), nullptr);
    ASSERT_NE(layout->itemAtPosition(1, 0), nullptr);
    EXPECT_EQ(layout->itemAtPosition(1, 1), nullptr);
    EXPECT_EQ(grid.cells()[2]->label(), "Support Files");
    EXPECT_EQ(layout->itemAtPosition(1, 0)->widget(), grid.cells()[2]);
}

TEST(StatGrid, OnlyAnEmphasizedValueTakesTheAccentColour) {
    StatGrid grid({{"Total", "9 GB", true}, {"Bundle", "2 GB", false}});
    EXPECT_TRUE(grid.cells()[0]->isEmphasized());
    EXPECT_FALSE(grid.cells()[1]->isEmphasized());
}

TEST(StatGrid, NewFiguresKeepTheCells) {
    StatGrid grid({{"Total", "9 GB", false}, {"Bundle", "2 GB", false}});
    Stat* first = grid.cells()[0];
    grid.setStats({{"Total", "10 GB", true}});
    ASSERT_EQ(grid.cells().size(), 1U);
    EXPECT_EQ(grid.cells()[0], first);
    EXPECT_EQ(first->value(), "10 GB");
    EXPECT_TRUE(first->isEmphasized());
}

TEST(ListRow, AllItsTextIsOfRegularWeight) {
    const ListRow row("doc", "app.helper", "Caches", "52 KB");
    const auto labels = row.findChildren<Label*>();
    EXPECT_EQ(labels.size(), 3);
    for (const auto* const label : labels) {
        EXPECT_EQ(label->textStyle().weight, QFont::Normal) << label->text().toStdString();
    }
}

TEST(Stat, AValueShrinksBeforeItElides) {
    FittedLabel value("1,104 days ago", TextStyle::detailTitle());
    value.resize(value.sizeHint());
    EXPECT_DOUBLE_EQ(value.fittedSize(), 17);
    value.resize(value.sizeHint().width() * 9 / 10, 20);
    EXPECT_LT(value.fittedSize(), 17);
    EXPECT_GT(value.fittedSize(), 13);
    value.resize(20, 20);
    EXPECT_DOUBLE_EQ(value.fittedSize(), 13);
}

TEST(Panel, WithoutATitleShowsNoHeadingRow) {
    Panel panel(std::nullopt, new QWidget);
    EXPECT_EQ(panel.heading(), nullptr);
    EXPECT_TRUE(panel.findChildren<Label*>().isEmpty());
    Panel titled(QString("Details"), new QWidget);
    ASSERT_NE(titled.heading(), nullptr);
    EXPECT_EQ(titled.heading()->text(), "Details");
    titled.adjustSize();
    panel.adjustSize();
    EXPECT_GT(titled.sizeHint().height(), panel.sizeHint().height());
}

TEST(ProtectedMark, SaysThatNothingWillRemoveIt) {
    const ProtectedMark mark;
    EXPECT_EQ(mark.symbol(), "shield.fill");
    EXPECT_EQ(mark.toolTip(), "Protected - Quillane will never remove this");
    EXPECT_EQ(mark.accessibleName(), mark.toolTip());
}

TEST(AccessBanner, SaysWhatIsMissingAndHowToGrantIt) {
    AccessBanner banner([] {}, [] {});
    QStringList texts;
    for (const auto* label : banner.findChildren<Label*>()) {
        texts << label->text();
    }
    EXPECT_EQ(texts,
              QStringList({"Quillane can't see everything yet",
                           "macOS protects the Trash, app containers, and the Desktop and Documents folders. "
                           "Grant Full Disk Access and this banner will go away by itself within a few "
                           "seconds. If it doesn't, relaunch."}));
    EXPECT_EQ(banner.findChild<SymbolView*>()->symbol(), "lock.shield.fill");
    EXPECT_EQ(banner.grantButton()->text(), "Grant Access");
    EXPECT_EQ(banner.relaunchButton()->text(), "Relaunch");
}

TEST(AccessBanner, IconTextAndButtonsStandFromLeftToRight) {
    AccessBanner banner([] {}, [] {});
    banner.resize(800, banner.sizeHint().height());
    banner.show();
    const int icon = banner.findChild<SymbolView*>()->x();
    const int text = banner.findChild<Label*>()->x();
    EXPECT_LT(icon, text);
    EXPECT_LT(text, banner.grantButton()->x());
    EXPECT_LT(banner.grantButton()->x(), banner.relaunchButton()->x());
}

TEST(AccessBanner, EachButtonCallsItsOwn) {
    int granted = 0;
    int relaunched = 0;
    AccessBanner banner([&] { ++granted; }, [&] { ++relaunched; });
    banner.grantButton()->click();
    EXPECT_EQ(granted, 1);
    EXPECT_EQ(relaunched, 0);
    banner.relaunchButton()->click();
    EXPECT_EQ(granted, 1);
    EXPECT_EQ(relaunched, 1);
}

TEST(ResultAlertButtons, OrdinaryFailuresGetOnlyOK) {
    int dismissed = 0;
    ResultAlertButtons buttons(false, [] { FAIL(); }, [&] { ++dismissed; });
    ASSERT_EQ(buttons.buttons().size(), 1U);
    EXPECT_EQ(buttons.buttons()[0]->text(), "OK");
    buttons.buttons()[0]->click();
    EXPECT_EQ(dismissed, 1);
}

TEST(ResultAlertButtons, ADeniedAccessOffersTheSettingsFirst) {
    std::vector<std::string> calls;
    ResultAlertButtons buttons(
        true, [&] { calls.emplace_back("settings"); }, [&] { calls.emplace_back("dismiss"); });
    ASSERT_EQ(buttons.buttons().size(), 2U);
    EXPECT_EQ(buttons.buttons()[0]->text(), "Grant Full Disk Access…");
    EXPECT_EQ(buttons.buttons()[1]->text(), "OK");
    buttons.buttons()[0]->click();
    EXPECT_EQ(calls, (std::vector<std::string>{"settings", "dismiss"}));
}

TEST(ResultAlertButtons, DismissingMayDestroyTheButtons) {
    auto* parent = new QWidget;
    auto* buttons = new ResultAlertButtons(
        true, [] {},
        [&] {
            delete parent;
            parent = nullptr;
        },
        parent);
    buttons->buttons()[0]->click();
    EXPECT_EQ(parent, nullptr);
}

TEST(PushButton, AnAmpersandIsShownAndNotAMnemonic) {
    const PushButton button("Search & Rescue");
    EXPECT_EQ(button.text(), "Search && Rescue");
    EXPECT_EQ(button.label(), "Search & Rescue");
    EXPECT_EQ(button.accessibleName(), "Search & Rescue");
}

TEST(PushButton, EachSizeHasItsHeight) {
    using Size = PushButton::Size;
    for (const Size size : {Size::Small, Size::Regular, Size::Sheet, Size::Hero}) {
        const PushButton button("Review", "sparkles", PushButton::Role::Normal, size);
        EXPECT_EQ(button.sizeHint().height(), static_cast<int>(size));
    }
}

TEST(PushButton, ACompactButtonKeepsItsNameAndTellsItAsTooltip) {
    PushButton button("Reveal in Finder", "folder");
    const int full = button.sizeHint().width();
    button.setCompact(true);
    EXPECT_TRUE(button.text().isEmpty());
    EXPECT_EQ(button.sizeHint().width(), 30);
    EXPECT_EQ(button.accessibleName(), "Reveal in Finder");
    EXPECT_EQ(button.toolTip(), "Reveal in Finder");
    button.setCompact(false);
    EXPECT_EQ(button.sizeHint().width(), full);
    EXPECT_TRUE(button.toolTip().isEmpty());
}

TEST(PushButton, WithoutASymbolNothingCanBeCompact) {
    PushButton button("Cancel");
    button.setCompact(true);
    EXPECT_FALSE(button.isCompact());
    EXPECT_EQ(button.text(), "Cancel");
}

TEST(PushButton, IsNobodysDefaultUnlessTold) {
    const PushButton button("Delete for Good", {}, PushButton::Role::Permanent);
    EXPECT_FALSE(button.isDefault());
    EXPECT_FALSE(button.autoDefault());
}

TEST(ToolbarRow, OnlyTheShrinkingButtonLosesItsLabelWhenSpaceIsShort) {
    ToolbarRow row;
    auto* stop = new PushButton("Stop Until Login", "stop.circle");
    auto* reveal = new PushButton("Reveal in Finder", "folder");
    auto* trash = new PushButton("Move to Trash", "trash", PushButton::Role::Destructive);
    row.addControl(stop);
    row.addControl(reveal);
    row.addControl(trash);
    row.setShrinking(reveal);
    row.resize(348, 52);
    row.show();
    QCoreApplication::processEvents();
    EXPECT_TRUE(reveal->isCompact());
    EXPECT_FALSE(trash->isCompact());
    EXPECT_LE(row.minimumSizeHint().width(), 348);
    EXPECT_LE(trash->geometry().right(), 348);
    row.resize(600, 52);
    QCoreApplication::processEvents();
    EXPECT_FALSE(reveal->isCompact());
}

TEST(ToolbarRow, IsFiftyTwoHigh) {
    ToolbarRow row("Applications");
    EXPECT_EQ(row.height(), 52);
    EXPECT_EQ(row.title(), "Applications");
}

TEST(ToolbarRow, AControlStandsInItsMiddleAndEndsSixteenBeforeTheNextColumn) {
    ToolbarRow middle("Applications"); // behind it comes a line of one pixel
    ToolbarRow last;
    for (auto* row : {&middle, &last}) {
        auto* const field = new SearchField;
        row->addControl(field);
        row->resize(600, 52);
        row->show();
        QCoreApplication::processEvents();
        EXPECT_EQ(field->y(), 12);
        EXPECT_EQ(field->geometry().right() + 1, row == &middle ? 585 : 584);
    }
}

TEST(StatusRow, TheSizeEndsWhereTheControlsAboveItEnd) {
    StatusRow row;
    row.setTexts("6 apps", {}, "245.3 MB");
    row.resize(600, 32);
    const QImage picture = row.grab().toImage();
    const auto ground = picture.pixel(2, 10);
    int last = 0;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 4; y < picture.height(); ++y) {
            last = picture.pixel(x, y) != ground ? x : last;
        }
    }
    EXPECT_GE(last, 582); // the letter has some air of its own
    EXPECT_LT(last, 585);
}

TEST(StatusRow, TheDotStandsOnlyBetweenTwoTexts) {
    StatusRow row;
    const auto shown = [&] {
        QStringList texts;
        for (const auto* label : row.findChildren<Label*>()) {
            if (!label->isHidden()) {
                texts << label->text();
            }
        }
        return texts;
    };
    row.setTexts("64 apps", {}, "1 GB total");
    EXPECT_EQ(shown(), QStringList({"64 apps", "1 GB total"}));
    row.setTexts("14 locations", "69 GB", {});
    EXPECT_EQ(shown(), QStringList({"14 locations", "•", "69 GB"}));
}

TEST(SearchField, EscapeClearsItAndIsPassedOnOnlyWhenEmpty) {
    QWidget window;
    SearchField field(&window);
    window.show();
    field.setText("xcode");
    QKeyEvent first(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&field, &first);
    EXPECT_TRUE(first.isAccepted());
    EXPECT_TRUE(field.text().isEmpty());
    QKeyEvent second(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    second.ignore();
    QSignalSpy edited(&field, &QLineEdit::textChanged);
    QCoreApplication::sendEvent(&field, &second);
    EXPECT_FALSE(second.isAccepted());
    EXPECT_TRUE(edited.isEmpty());
}

TEST(SearchField, IsPromptedAndNamedSearch) {
    const SearchField field;
    EXPECT_EQ(field.placeholderText(), "Search");
    EXPECT_EQ(field.accessibleName(), "Search");
    EXPECT_EQ(field.width(), 220);
    EXPECT_TRUE(field.isClearButtonEnabled());
}

TEST(SearchField, ThePromptIsQuietAndBeginsThirtyFromTheEdge) {
    SearchField field;
    const QImage picture = drawn(field); // twice the size
    int first = picture.width();
    bool isQuiet = false;
    for (int x = 50; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            first = qGray(picture.pixel(x, y)) < 180 ? std::min(first, x) : first;
            isQuiet = isQuiet || picture.pixelColor(x, y) == Tokens::current().text3;
        }
    }
    EXPECT_NEAR(first, 61, 1);
    EXPECT_TRUE(isQuiet);
}

TEST(DetailRow, ALongValueIsElidedButCopiedWhole) {
    const QString path =
        "/Users/alex/Library/Developer/Xcode/iOS DeviceSupport/iPhone15,3 17.5 (21F79)/Symbols";
    QWidget window;
    auto* row = new DetailRow("Location", path, &window);
    row->resize(300, 30);
    window.resize(300, 30);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    auto* value = row->findChild<ValueField*>();
    EXPECT_TRUE(value->isElided());
    EXPECT_EQ(row->value(), path);
    value->setFocus(Qt::MouseFocusReason);
    value->selectAll();
    value->copy();
    EXPECT_EQ(QApplication::clipboard()->text(), path);
}

TEST(DetailRow, TabPassesTheValueBy) {
    const DetailRow row("Location", "/Applications");
    EXPECT_FALSE(row.findChild<ValueField*>()->focusPolicy() & Qt::TabFocus);
    EXPECT_TRUE(row.findChild<ValueField*>()->isReadOnly());
}

TEST(DetailHeader, AnEmptySubtitleTakesNoRoom) {
    DetailHeader header(nullptr, "Tessel Studio", {});
    const int without = header.sizeHint().height();
    header.setTexts("Tessel Studio", "Version 3.9.4");
    header.layout()->activate();
    EXPECT_GT(header.sizeHint().height(), without);
    EXPECT_EQ(header.subtitle(), "Version 3.9.4");
}

TEST(Label, ShowsMarkupAsItIs) {
    const Label label("<b>not bold</b>.txt");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    const Label plain("not bold.txt");
    EXPECT_GT(label.sizeHint().width(), plain.sizeHint().width());
}

TEST(ElidedLabel, KeepsItsWholeText) {
    ElidedLabel label("com.oldink.Sketchpad.sync");
    label.resize(label.sizeHint());
    EXPECT_FALSE(label.isElided());
    label.resize(60, 20);
    EXPECT_TRUE(label.isElided());
    EXPECT_EQ(label.text(), "com.oldink.Sketchpad.sync");
    EXPECT_LT(label.minimumSizeHint().width(), 60);
}

TEST(TabularText, FiguresOfTheSameLengthAreEquallyWide) {
    const QFontMetricsF metrics(TextStyle::body().font());
    EXPECT_DOUBLE_EQ(TabularText::width(metrics, "111.1 MB"), TabularText::width(metrics, "888.8 MB"));
    EXPECT_GT(TabularText::width(metrics, "1111.1 MB"), TabularText::width(metrics, "888.8 MB"));
}

TEST(TabularText, WhatDoesNotFitIsCutAtItsEnd) {
    const QFontMetricsF metrics(TextStyle::body().font());
    const QString text = "1234567890 items";
    EXPECT_EQ(TabularText::elided(metrics, text, 1000), text);
    const QString cut = TabularText::elided(metrics, text, 60);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_TRUE(text.startsWith(cut.chopped(1)));
    EXPECT_LE(TabularText::width(metrics, cut), 60);
}

TEST(EmptyState, ASpinnerTakesTheSymbolsPlaceWhileLoading) {
    EmptyState state("magnifyingglass", "Search your files", "Nothing yet.");
    EXPECT_FALSE(state.isLoading());
    EXPECT_FALSE(state.findChild<SymbolView*>()->isHidden());
    state.setLoading("Searching…");
    EXPECT_TRUE(state.isLoading());
    EXPECT_TRUE(state.findChild<SymbolView*>()->isHidden());
    EXPECT_EQ(state.title(), "Searching…");
    state.setContent("magnifyingglass", "Nothing found", "Try other words.");
    EXPECT_FALSE(state.isLoading());
    EXPECT_EQ(state.sentence(), "Try other words.");
}

TEST(EmptyState, ALongSentenceIsShownWhole) {
    EmptyState state("power", "No Selection", "Pick an item to see what it runs and who installed it.",
                     EmptyState::kDetailWidth);
    state.resize(348, 400);
    state.show();
    for (const auto* label : state.findChildren<Label*>()) {
        EXPECT_GE(label->height(), label->heightForWidth(label->width())) << label->text().toStdString();
    }
}

class SpinnerTest : public ::testing::Test {
  protected:
    void TearDown() override { Look::setReducedMotion(false); }
};

TEST_F(SpinnerTest, MovesOnlyWhileItIsShown) {
    Spinner spinner;
    EXPECT_FALSE(spinner.isAnimating());
    spinner.show();
    EXPECT_TRUE(spinner.isAnimating());
    spinner.hide();
    EXPECT_FALSE(spinner.isAnimating());
}

TEST_F(SpinnerTest, StandsStillWithReducedMotion) {
    Look::setReducedMotion(true);
    Spinner spinner;
    spinner.show();
    EXPECT_FALSE(spinner.isAnimating());
}

TEST(ProgressBar, TellsItsValueAndRange) {
    ProgressBar bar;
    bar.setRange(0, 64);
    bar.setValue(38);
    EXPECT_EQ(bar.width(), 120);
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_NE(interface->valueInterface(), nullptr);
    EXPECT_EQ(interface->valueInterface()->currentValue().toInt(), 38);
    EXPECT_EQ(interface->valueInterface()->maximumValue().toInt(), 64);
}

} // namespace
} // namespace quillane
