#include "Applications/AppDetailView.h"
#include "Components/Look.h"
#include "Components/SearchField.h"
#include "Components/SidebarView.h"
#include "Shell/Sidebar.h"
#include "Tables/TableView.h"
#include "WindowPicture.h"
#include "WindowTest.h"
#include <QDir>
#include <QImage>
#include <QMenu>

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

// The window as a person meets it, kept as pictures under the build folder for whoever wants to look.
class Pictures : public WindowTest {
  protected:
    void TearDown() override { Look::setDark(false); }

    QImage keep(const QString& name) {
        finish();
        window->activateWindow(); // what was drawn before may have cost the window its focus
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        QImage picture(window->size() * 1.5, QImage::Format_RGB32);
        picture.setDevicePixelRatio(1.5);
        window->render(&picture);
        const QDir folder(QCoreApplication::applicationDirPath() + "/../../../pictures");
        EXPECT_TRUE(QDir().mkpath(folder.path()));
        EXPECT_TRUE(picture.save(folder.filePath(name + ".png")));
        return picture;
    }

    std::vector<InstalledApp> shelf() const {
        struct Row {
            const char* name;
            Bytes megabytes;
            int daysAgo; // below 0: never used
            Architecture architecture;
            const char* version;
            bool store;
        };
        using enum Architecture;
        std::vector<InstalledApp> apps;
        for (const auto& row : {
                 Row{"Harbour VM", 22'610, 2, appleSilicon, "5.2.1", false},
                 Row{"Northlight RAW", 14'630, 8, universal, "7.2.1", true},
                 Row{"Tessel Studio", 2'310, 245, intel, "3.9.4", false},
                 Row{"Meridian Maps", 8'170, 35, universal, "12.0", false},
                 Row{"Pinion 3D", 6'920, 95, appleSilicon, "2024.2", false},
                 Row{"Lumen Browser", 5'380, 0, universal, "131.0.2", false},
                 Row{"Cadenza", 4'260, 1, appleSilicon, "4.1", true},
                 Row{"Brambleworks", 2'480, 400, intel, "5.0.7", false},
                 Row{"Copperplate", 1'420, 215, universal, "2.2.0", false},
                 Row{"Vesper Notes", 1'130, 1, appleSilicon, "10.6", true},
                 Row{"Halyard", 986, 21, universal, "0.44.1", false},
                 Row{"Fernway", 842, -1, appleSilicon, "1.0.3", false},
                 Row{"Quartzo", 412, 9 * 365, intel32, "1.4.2", false},
                 Row{"An application with a name that is longer than its column could ever be", 388, 6,
                     unknown, "2024.11.20-rc.3", true},
                 Row{"Sorrel", 274, 740, intel, "1.7", false},
             }) {
            auto app = measuredApp(row.name, row.megabytes * 1'000'000);
            app.version = row.version;
            app.architecture = row.architecture;
            app.isMacAppStore = row.store;
            if (row.daysAgo >= 0) {
                app.lastUsed = clock.now().addingSeconds(-86'400.0 * row.daysAgo);
            }
            apps.push_back(app);
        }
        auto& tessel = apps[2];
        tessel.buildVersion = "39412";
        tessel.bundleIdentifier = "co.tessel.studio";
        tessel.minimumSystemVersion = "10.15";
        tessel.leftovers = {leftover("/Users/alex/Library/Application Support/co.tessel.studio",
                                     "Application Support", 5'920'000'000),
                            leftover("/Users/alex/Library/Caches/co.tessel.studio", "Caches", 1'210'000'000),
                            leftover("/Users/alex/Library/Application Support/Tessel Studio",
                                     "Application Support", 284'600'000),
                            leftover("/Library/Preferences/co.tessel.studio.plist", "Preferences", 4'000)};
        tessel.leftovers[1].isCache = true;
        tessel.leftovers[2].confidence = LeftoverItem::Confidence::medium;
        tessel.leftovers[3].requiresAdmin = true;
        return apps;
    }
};

} // namespace

TEST_F(Pictures, TheWindowIsDrawnInLightAndFollowsAChangeToDark) {
    openReady(shelf());
    click("Tessel Studio");
    table().setFocus();
    const QImage light = keep("applications");
    Look::setDark(true);
    const QImage dark = keep("applications-dark");
    EXPECT_GT(qGray(light.pixel(5, 500)), 200);
    EXPECT_LT(qGray(dark.pixel(5, 500)), 80);
    window->resize(ContentView::kMinimumSize);
    keep("applications-min-window-dark");
    Look::setDark(false);
    keep("applications-min-window");
}

TEST_F(Pictures, SeveralSelectedRowsWithoutTheFocusKeepTheirColours) {
    openReady(shelf());
    keep("applications-none");
    click("Tessel Studio");
    click("Pinion 3D", Qt::ControlModifier);
    click("Meridian Maps", Qt::ControlModifier);
    click("Sorrel", Qt::ControlModifier);
    table().setFocus();
    const QImage focused = keep("applications-multi");
    window->searchField()->setFocus();
    EXPECT_NE(keep("applications-multi-idle"), focused);
}

TEST_F(Pictures, AScanIsSeenInTheRowsAndInTheStatusLine) {
    auto apps = shelf();
    for (std::size_t i = 0; i < apps.size(); i += 2) {
        apps[i] = unmeasuredApp(apps[i].name);
    }
    open({Kind::measuring, 8, 15}, apps);
    click("Harbour VM");
    const QImage measuring = keep("applications-measuring");
    library.phase = AppLibrary::Phase{Kind::findingOrphans};
    EXPECT_NE(keep("applications-finding"), measuring);
}

TEST_F(Pictures, AProtectedApplicationIsMarkedAndOffersNothing) {
    auto apps = shelf();
    apps[1].architecture = Architecture::appleSilicon; // the longest chips
    openReady(apps);
    click("Northlight RAW");
    table().setFocus();
    const QImage free = keep("applications-free");
    library.setProtected(FileURL("/Applications/Northlight RAW.app"), true);
    library.setProtected(FileURL("/Applications/Cadenza.app"), true);
    library.setProtected(FileURL("/Applications/Halyard.app"), true);
    EXPECT_NE(keep("applications-protected"), free);
    Look::setDark(true);
    keep("applications-protected-dark");
}

TEST_F(Pictures, TheMenuOfAnApplication) {
    openReady(shelf());
    fakes.running.start("co.tessel.studio");
    click("Tessel Studio");
    const auto picture = [&](const QString& name) {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->setActiveAction(menu->actions().at(1));
        turn();
        EXPECT_TRUE(keepPicture(pictureOf(*menu), name));
        menu->close();
    };
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_F10, Qt::ShiftModifier);
    picture("applications-menu");
    Look::setDark(true);
    turn();
    QTest::keyClick(&table(), Qt::Key_F10, Qt::ShiftModifier);
    picture("applications-menu-dark");
}

TEST_F(Pictures, SearchedToNothingAndReachedByTab) {
    openReady(shelf());
    window->sidebar()->list()->setFocus(Qt::TabFocusReason);
    const QImage all = keep("applications-sidebar-focus");
    QTest::keyClicks(window->searchField(), "zzz");
    const QImage nothing = keep("applications-searched-to-nothing");
    EXPECT_NE(nothing, all);
    Look::setDark(true);
    EXPECT_NE(keep("applications-searched-to-nothing-dark"), nothing);
}

TEST_F(Pictures, TheTableWithoutApplicationsTellsWhy) {
    open({Kind::scanning}, {});
    const QImage looking = keep("applications-looking");
    library.phase = AppLibrary::Phase{Kind::ready};
    const QImage none = keep("applications-no-applications");
    EXPECT_NE(none, looking);
    Look::setDark(true);
    EXPECT_NE(keep("applications-no-applications-dark"), none);
}
