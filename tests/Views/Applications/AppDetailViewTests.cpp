#include "Applications/AppDetailView.h"
#include "Applications/ApplicationsDetail.h"
#include "Components/Badge.h"
#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/Label.h"
#include "Components/ListRow.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PushButton.h"
#include "Components/Stat.h"
#include "Components/StatGrid.h"
#include "Components/SymbolView.h"
#include "Components/ToolbarRow.h"
#include "WindowTest.h"
#include <QScrollArea>
#include <QScrollBar>

using namespace quillane;

namespace {

class AppDetail : public WindowTest {
  protected:
    // Opens the window with this application selected.
    AppDetailView& show(const InstalledApp& app) {
        openReady({app});
        click(QString::fromStdString(app.name));
        turn();
        return *detail().one();
    }
    static InstalledApp tessel() {
        auto app = measuredApp("Tessel Studio", 2'310'000'000);
        app.version = "3.9.4";
        app.buildVersion = "39412";
        app.bundleIdentifier = "co.tessel.studio";
        app.minimumSystemVersion = "10.15";
        app.architecture = Architecture::intel;
        app.leftovers = {leftover("/Users/alex/Library/Application Support/co.tessel.studio",
                                  "Application Support", 5'920'000'000),
                         leftover("/Users/alex/Library/Caches/co.tessel.studio", "Caches", 1'210'000'000)};
        return app;
    }
    static std::vector<std::pair<QString, QString>> figures(const AppDetailView& view) {
        std::vector<std::pair<QString, QString>> shown;
        for (const auto* cell : view.stats()->cells()) {
            shown.emplace_back(cell->label(), cell->value());
        }
        return shown;
    }
    static std::vector<std::pair<QString, QString>> rows(const AppDetailView& view) {
        std::vector<std::pair<QString, QString>> shown;
        for (const auto* row : view.details()) {
            shown.emplace_back(row->label(), row->value());
        }
        return shown;
    }
    static QStringList chips(const AppDetailView& view) {
        QStringList shown;
        for (const auto* chip : view.chips()) {
            shown << chip->text() + "/" + chip->symbol();
        }
        return shown;
    }
    using Pairs = std::vector<std::pair<QString, QString>>;
};

} // namespace

TEST_F(AppDetail, TheHeaderNamesTheApplicationItsVersionAndBuild) {
    const auto& view = show(tessel());
    EXPECT_EQ(view.header()->title(), "Tessel Studio");
    EXPECT_EQ(view.header()->subtitle(), "Version 3.9.4 (39412)");
}

TEST_F(AppDetail, TheChipsTellArchitectureAndPlace) {
    const auto& view = show(tessel());
    EXPECT_EQ(chips(view), QStringList({"Intel/arrow.triangle.2.circlepath", "Applications/internaldrive"}));
    EXPECT_EQ(view.chips().front()->tint(), Tint::Orange);
}

TEST_F(AppDetail, AStoreApplicationHasTheChipInTheMiddle) {
    auto app = measuredApp("Bought", 1);
    app.isMacAppStore = true;
    app.source = AppSource::userApplications;
    EXPECT_EQ(chips(show(app)),
              QStringList({"Universal/checkmark.seal", "App Store/bag.fill", "User/internaldrive"}));
}

TEST_F(AppDetail, TheFootprintAddsBundleAndSupportFiles) {
    const auto& view = show(tessel());
    EXPECT_EQ(view.footprint()->heading()->text(), "Disk Footprint");
    EXPECT_EQ(figures(view),
              (Pairs{{"Total", "9.44 GB"}, {"Bundle", "2.31 GB"}, {"Support Files", "7.13 GB"}}));
    EXPECT_TRUE(view.stats()->cells().front()->isEmphasized());
}

TEST_F(AppDetail, AnUnmeasuredApplicationShowsNoFigures) {
    const auto& view = show(unmeasuredApp("Waiting"));
    EXPECT_TRUE(view.measuring()->isVisible());
    EXPECT_EQ(view.measuring()->findChild<Label*>()->text(), "Measuring…");
    EXPECT_FALSE(view.stats()->isVisible());
}

TEST_F(AppDetail, OnlyAnIntelApplicationHasTheNoteOnTranslation) {
    const auto& view = show(tessel());
    EXPECT_TRUE(view.rosettaNote()->isVisible());
    EXPECT_EQ(view.rosettaNote()->text(),
              "This app has no Apple Silicon build and runs through Rosetta 2 translation.");
    for (const auto architecture : {Architecture::universal, Architecture::appleSilicon,
                                    Architecture::intel32, Architecture::powerPC, Architecture::unknown}) {
        auto app = tessel();
        app.architecture = architecture;
        publish({app});
        turn();
        EXPECT_FALSE(view.rosettaNote()->isVisible()) << rawValue(architecture);
    }
}

TEST_F(AppDetail, TheDetailsNameIdentifierFolderLastUseAndSystem) {
    auto app = tessel();
    app.lastUsed = clock.now().addingSeconds(-3 * 86'400.0);
    EXPECT_EQ(rows(show(app)), (Pairs{{"Bundle ID", "co.tessel.studio"},
                                      {"Location", "/Applications"},
                                      {"Last Used", "3 days ago"},
                                      {"Minimum macOS", "10.15"}}));
}

TEST_F(AppDetail, AnAbsentValueIsADash) {
    EXPECT_EQ(rows(show(measuredApp("Bare", 1))), (Pairs{{"Bundle ID", "—"},
                                                         {"Location", "/Applications"},
                                                         {"Last Used", "Never"},
                                                         {"Minimum macOS", "—"}}));
}

TEST_F(AppDetail, TheNumberOfSupportFilesIsGrouped) {
    auto app = tessel();
    app.leftovers.assign(1001, leftover("/Library/Logs/tessel", "Logs", 1));
    EXPECT_EQ(show(app).supportFiles()->heading()->text(), "Support Files (1,001)");
}

TEST_F(AppDetail, SupportFilesAreListedInTheirOrder) {
    auto app = tessel();
    app.leftovers[1].requiresAdmin = true;
    app.leftovers[1].confidence = LeftoverItem::Confidence::medium;
    const auto& view = show(app);
    ASSERT_NE(view.supportFiles(), nullptr);
    EXPECT_EQ(view.supportFiles()->heading()->text(), "Support Files (2)");
    const auto listed = view.supportFiles()->findChildren<ListRow*>();
    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(listed[0]->title(), "co.tessel.studio");
    EXPECT_EQ(listed[0]->subtitle(), "Application Support");
    EXPECT_EQ(listed[0]->sizeText(), "5.92 GB");
    EXPECT_EQ(listed[0]->findChild<SymbolView*>()->symbol(), "doc");
    EXPECT_EQ(listed[1]->subtitle(), "Caches, name match");
    EXPECT_EQ(listed[1]->findChild<SymbolView*>()->symbol(), "lock.fill");
    EXPECT_EQ(listed[1]->findChild<SymbolView*>()->toolTip(), "Needs admin rights to remove");
    EXPECT_TRUE(listed[0]->findChild<SymbolView*>()->toolTip().isEmpty());
}

TEST_F(AppDetail, WithoutSupportFilesThereIsNoBlockAtTheEnd) {
    const auto& view = show(tessel());
    auto app = tessel();
    app.leftovers.clear();
    publish({app});
    turn();
    EXPECT_EQ(view.supportFiles(), nullptr);
}

TEST_F(AppDetail, NamesThatDeceiveAreShownAsTheyAre) {
    auto app = tessel();
    app.name = "safe\u202Eexe";
    app.bundleIdentifier = "a\nb";
    app.leftovers[0].url = FileURL("/Users/alex/Library/\u202Egpj");
    openReady({app});
    click("safe‹U+202E›exe");
    turn();
    const auto& view = *detail().one();
    EXPECT_EQ(view.header()->title(), "safe‹U+202E›exe");
    EXPECT_EQ(view.details().front()->value(), "a‹U+000A›b");
    EXPECT_EQ(view.supportFiles()->findChildren<ListRow*>().front()->title(), "‹U+202E›gpj");
}

TEST_F(AppDetail, RevealShowsTheBundleInTheFileManager) {
    const auto& view = show(tessel());
    EXPECT_EQ(view.revealButton()->accessibleName().isEmpty() ? view.revealButton()->text()
                                                              : view.revealButton()->accessibleName(),
              "Reveal in Finder");
    QTest::mouseClick(view.revealButton(), Qt::LeftButton);
    EXPECT_EQ(workspace.revealed(),
              (std::vector<std::vector<FileURL>>{{FileURL("/Applications/Tessel Studio.app")}}));
}

TEST_F(AppDetail, WhereTheButtonsDoNotFitRevealShrinksToItsSymbol) {
    const auto& view = show(tessel());
    EXPECT_FALSE(view.revealButton()->isCompact());
    for (const auto* const words : {"One more button", "And another one"}) {
        view.toolbar()->addControl(new PushButton(words));
    }
    turn();
    EXPECT_TRUE(view.revealButton()->isCompact());
    EXPECT_EQ(view.revealButton()->toolTip(), "Reveal in Finder");
}

TEST_F(AppDetail, AChangedFigureKeepsTheScrollPosition) {
    auto app = tessel();
    for (int i = 0; i < 40; ++i) {
        app.leftovers.push_back(leftover("/Users/alex/Library/Logs/" + std::to_string(i), "Logs", 1'000'000));
    }
    const auto& view = show(app);
    auto* const bar = view.findChild<QScrollArea*>()->verticalScrollBar();
    bar->setValue(200);
    app.bundleBytes += 5'000'000'000;
    publish({app});
    turn();
    EXPECT_EQ(bar->value(), 200);
    EXPECT_EQ(figures(view).front().second, "14.48 GB");
}
