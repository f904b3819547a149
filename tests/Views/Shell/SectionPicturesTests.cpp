#include "Components/Look.h"
#include "Duplicates/CopiesList.h"
#include "SectionRecords.h"
#include "SectionTableTest.h"
#include "WindowPicture.h"

using namespace quillane;
using Kind = AppLibrary::Phase::Kind;

namespace {

// The sections of what the finders found as a person meets them, kept as pictures under the build folder for
// whoever wants to look.
class SectionPictures : public SectionTableTest {
  protected:
    explicit SectionPictures(LibrarySection section)
        : SectionTableTest(section) {}
    void TearDown() override { Look::setDark(false); }

    void openFilled() {
        library.orphans = leftBehind();
        library.developerCaches = caches();
        library.duplicates = groups();
        library.files = largeFiles();
        library.startupItems = startup();
        library.photosLibraryBytes = std::optional<Bytes>(84'210'000'000);
        openReady({measuredApp("Alder", 1'000'000)});
        table().setFocus();
    }
    // The window as it is now.
    QImage keep(const QString& name) {
        turn();
        window->activateWindow(); // what was drawn before may have cost the window its focus
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        const QImage picture = pictureOf(*window);
        EXPECT_TRUE(keepPicture(picture, name));
        return picture;
    }
    // In light and dark, and both in the smallest window.
    void keepAll(const QString& name) {
        const QImage light = keep(name);
        Look::setDark(true);
        const QImage dark = keep(name + "-dark");
        EXPECT_GT(qGray(light.pixel(600, 1000)), 200);
        EXPECT_LT(qGray(dark.pixel(600, 1000)), 80);
        window->resize(ContentView::kMinimumSize);
        keep(name + "-min-window-dark");
        Look::setDark(false);
        keep(name + "-min-window");
    }
    void keepMenu(const QString& name) {
        press(Qt::Key_F10, Qt::ShiftModifier);
        ASSERT_NE(openMenu(), nullptr);
        turn();
        EXPECT_TRUE(keepPicture(pictureOf(*openMenu()), name));
        closeMenu();
    }
    std::vector<UserFile> largeFiles() const {
        std::vector<UserFile> files = {
            fileAt("Movies/Lisbon walkthrough 4K.mov", 8'420'000'000, daysAgo(412)),
            fileAt("Documents/Machines/Harbour - Debian 12.img", 6'440'000'000, daysAgo(95)),
            fileAt("Downloads/wedding-raw-selects.zip", 5'910'000'000, daysAgo(800)),
            fileAt("Music/Sessions/Interview master.wav", 4'680'000'000),
            fileAt("Documents/Old laptop/Desktop/atlas-backup-2022.tar", 3'870'000'000),
            fileAt("Downloads/Alder 2.1.dmg", 640'800'000, daysAgo(20)),
            fileAt("Documents/Cloud/Field notes video.mov", 4'000, daysAgo(32))};
        files[5].installsAnInstalledApp = true;
        files[6].isCloudPlaceholder = true;
        files[6].logicalBytes = 900'000'000;
        return files;
    }

    static StartupItem timed(StartupItem item, bool runAtLoad, bool keepAlive,
                             std::optional<int> interval = {}) {
        item.runAtLoad = runAtLoad;
        item.keepAlive = keepAlive;
        item.interval = interval;
        return item;
    }
    static std::vector<StartupItem> startup() {
        using Health = StartupItem::Health;
        auto helper = startupDaemon("fm.tempo.desktop.updater.privileged", Health::orphaned);
        helper.kind = StartupItem::Kind::helper;
        std::vector<StartupItem> items = {
            timed(startupItem("fm.tempo.desktop.agent", Health::broken), true, true),
            timed(startupItem("com.oldink.Sketchpad.sync", Health::orphaned), true, false, 3600),
            helper,
            timed(startupItem("app.orbit.mail.notifier", Health::ok, "Orbit Mail"), true, false),
            timed(startupItem("com.northlight.raw.indexer", Health::ok, "Northlight RAW (same vendor)"),
                  false, false, 900),
            timed(startupDaemon("com.northlight.share", Health::ok, "Northlight RAW"), true, false),
            timed(startupDaemon("dev.harbour.vm.network", Health::ok, "Harbour VM"), true, true)};
        items[0].isLoaded = true;
        items[1].isLoaded = true;
        items[1].program = "/Users/alex/Library/Application Support/com.oldink.Sketchpad/sync-agent";
        items[3].isLoaded = true;
        return items;
    }

  private:
    std::vector<OrphanItem> leftBehind() const {
        struct Row {
            const char* identifier;
            Bytes megabytes;
            int files;
            int daysAgo; // below 0: unknown
            bool needsAdmin;
        };
        std::vector<OrphanItem> items;
        for (const auto& row :
             {Row{"com.sketchpad.desktop", 1'080, 4, 800, false}, Row{"org.relay.client", 612, 6, 400, false},
              Row{"fm.tempo.desktop", 462, 3, 1104, true}, Row{"nl.polder.maps", 268, 5, 245, false},
              Row{"io.inkwell.an-identifier-that-is-longer-than-its-column", 142, 2, 62, true},
              Row{"de.vantage", 98, 1, 1500, true}, Row{"com.moss.weather", 61, 1'234, 215, false},
              Row{"dev.skiff", 12, 2, -1, false}}) {
            for (int i = 0; i < row.files; ++i) {
                const auto name = row.identifier + std::string(i > 0 ? ".part" + std::to_string(i) : "");
                auto item = orphan(name, row.identifier, i == 0 ? row.megabytes * 1'000'000 : 0);
                item.requiresAdmin = row.needsAdmin && i == 0;
                if (row.daysAgo >= 0) {
                    item.lastModified = daysAgo(row.daysAgo);
                }
                items.push_back(std::move(item));
            }
        }
        return items;
    }
    std::vector<DevCacheItem> caches() const {
        struct Row {
            const char* tool;
            const char* kind;
            Bytes megabytes;
            int daysAgo;
            bool isSafe;
        };
        std::vector<DevCacheItem> items;
        for (const auto& row :
             {Row{"Finder", "iPhone / iPad backup - 00008110-001A2C", 31'600, 150, false},
              Row{"Simulator", "Simulator devices", 18'920, 8, false},
              Row{"Xcode", "Derived data", 5'840, 1, true}, Row{"Xcode", "Archives", 4'270, 61, false},
              Row{"Xcode", "iOS device support - iPhone15,3 17.5 (21F79)", 3'120, 215, true},
              Row{"npm / yarn / pnpm", "node_modules in atlas/web", 1'460, 21, false},
              Row{"Homebrew", "Download cache", 1'340, 4, true}, Row{"npm", "Package cache", 918, 0, true},
              Row{"Python", ".venv in tidepool", 812, 31, false},
              Row{"Gradle", "Dependency cache", 702, 65, true},
              Row{"TypeScript", "Type acquisition cache", 41, 6, true}}) {
            auto item = devCache(row.tool, row.kind, row.megabytes * 1'000'000, row.isSafe);
            item.lastModified = daysAgo(row.daysAgo);
            items.push_back(std::move(item));
        }
        return items;
    }
    std::vector<DuplicateGroup> groups() const {
        return {copies("a1", 1'420'000'000,
                       {copyAt("Movies/Exports/Studio tour.mov", daysAgo(21)),
                        copyAt("Documents/Clients/Halden/Studio tour.mov", daysAgo(62)),
                        copyAt("Downloads/Studio tour.mov", daysAgo(400))}),
                copies("b2", 912'600'000,
                       {copyAt("Downloads/press-kit-2024.zip"), copyAt("Desktop/press-kit-2024.zip")}),
                copies("c3", 184'300'000,
                       {copyAt("Music/Demo mix.wav"), copyAt("Music/Old/Demo mix.wav"),
                        copyAt("Desktop/Demo mix.wav"), copyAt("Downloads/Demo mix.wav")}),
                copies("d4", 48'700'000,
                       {copyAt("Documents/Lease agreement scan.pdf"),
                        copyAt("Documents/An archive of folders/whose names/are longer/than the pane/is "
                               "wide/Lease agreement scan.pdf")}),
                copies("e5", 6'100'000,
                       {copyAt("Pictures/IMG_2214.heic", daysAgo(3)), copyAt("Desktop/IMG_2214.heic"),
                        copyAt("Desktop/IMG_2214 2.heic"), copyAt("Downloads/IMG_2214.heic"),
                        copyAt("Documents/IMG_2214.heic")}),
                copies("f6", 2'800'000,
                       {copyAt("Documents/Budget 2025.numbers"), copyAt("Downloads/Budget 2025.numbers")})};
    }
};

class FilesPictures : public SectionPictures {
  protected:
    FilesPictures()
        : SectionPictures(LibrarySection::files) {}
    // A horizon at dusk.
    static std::shared_ptr<const IconImage> dusk() {
        IconImage image{600, 400, {}};
        image.rgba.reserve(600 * 400 * 4);
        for (int y = 0; y < 400; ++y) {
            const auto fall = static_cast<std::uint8_t>(y / 2);
            for (int x = 0; x < 600; ++x) {
                const bool isSea = y > 300;
                image.rgba.insert(image.rgba.end(),
                                  {static_cast<std::uint8_t>(isSea ? 27 : 240 - fall / 2),
                                   static_cast<std::uint8_t>(isSea ? 36 : 200 - fall),
                                   static_cast<std::uint8_t>(isSea ? 64 : 140 + fall / 4), 255});
            }
        }
        return std::make_shared<const IconImage>(std::move(image));
    }
};

class OrphanPictures : public SectionPictures {
  protected:
    OrphanPictures()
        : SectionPictures(LibrarySection::orphans) {}
};

class DeveloperPictures : public SectionPictures {
  protected:
    DeveloperPictures()
        : SectionPictures(LibrarySection::developer) {}
};

class StartupPictures : public SectionPictures {
  protected:
    StartupPictures()
        : SectionPictures(LibrarySection::startup) {
        namingColumn = 1;
    }
};

class DuplicatesPictures : public SectionPictures {
  protected:
    DuplicatesPictures()
        : SectionPictures(LibrarySection::duplicates) {}
};

} // namespace

TEST_F(OrphanPictures, TheWindowIsDrawnInLightAndDarkAndSmall) {
    openFilled();
    click("fm.tempo.desktop");
    keepAll("orphans");
    keepMenu("orphans-menu");
}

TEST_F(OrphanPictures, TheTableWithoutRowsTellsWhy) {
    openReady({});
    const QImage nothing = keep("orphans-none");
    library.phase = AppLibrary::Phase{Kind::findingOrphans};
    const QImage looking = keep("orphans-looking");
    EXPECT_NE(looking, nothing);
    library.orphans = {orphan("com.one", "com.one", 1)};
    library.searchText = "zzz";
    EXPECT_NE(keep("orphans-searched-to-nothing"), looking);
}

TEST_F(DeveloperPictures, TheWindowIsDrawnInLightAndDarkAndSmall) {
    openFilled();
    library.setProtected(library.developerCaches->at(3).url, true);
    turn();
    click("Simulator");
    keepAll("developer");
    keepMenu("developer-menu");
}

TEST_F(DeveloperPictures, SelectedRowsKeepTheirColoursWithoutTheFocus) {
    openFilled();
    library.setProtected(library.developerCaches->at(3).url, true);
    turn();
    click("Finder");
    click("Python", Qt::ShiftModifier);
    const QImage focused = keep("developer-multi");
    window->sidebar()->list()->setFocus();
    EXPECT_NE(keep("developer-multi-idle"), focused);
}

TEST_F(DeveloperPictures, TheTableWithoutRowsTellsWhy) {
    openReady({});
    const QImage nothing = keep("developer-none");
    library.phase = AppLibrary::Phase{Kind::findingDeveloperCaches};
    EXPECT_NE(keep("developer-looking"), nothing);
}

TEST_F(DuplicatesPictures, TheWindowIsDrawnInLightAndDarkAndSmall) {
    openFilled();
    click("Studio tour.mov");
    turn();
    auto& rows = *window->detail(LibrarySection::duplicates)->findChild<CopiesList*>();
    rows.press(rows.model()->index(1, 0), CopiesList::Part::Choice);
    keepAll("duplicates");
    keepMenu("duplicates-menu");
}

TEST_F(DuplicatesPictures, LongFoldersAndManyCopiesAreDrawn) {
    openFilled();
    click("Lease agreement scan.pdf");
    const QImage longFolder = keep("duplicates-long-folder");
    click("IMG_2214.heic");
    EXPECT_NE(keep("duplicates-one-folder-twice"), longFolder);
    click("Demo mix.wav", Qt::ShiftModifier);
    keep("duplicates-multi");
}

TEST_F(DuplicatesPictures, TheTableWithoutRowsTellsWhy) {
    openReady({});
    const QImage looking = keep("duplicates-looking");
    finish();
    EXPECT_NE(keep("duplicates-none"), looking);
}

TEST_F(FilesPictures, TheWindowIsDrawnInLightAndDarkAndSmall) {
    previews.setThumbnail(largeFiles().front().url, dusk());
    openFilled();
    library.setProtected(library.files->at(4).url, true);
    click("Lisbon walkthrough 4K.mov");
    finish();
    keepAll("files");
    keepMenu("files-menu");
}

TEST_F(FilesPictures, TheSearchLensBeginsWithAHint) {
    openReady({});
    library.setFilesMode(FilesMode::search);
    const QImage hint = keep("files-search-empty");
    library.fileSearchText = "invoice";
    library.loadFiles();
    EXPECT_NE(keep("files-searching"), hint);
}

TEST_F(StartupPictures, TheWindowIsDrawnInLightAndDarkAndSmall) {
    openFilled();
    library.setProtected(library.startupItems->at(4).url, true);
    turn();
    click("com.oldink.Sketchpad.sync");
    keepAll("startup");
    keepMenu("startup-menu");
}

TEST_F(StartupPictures, TheTableWithoutRowsTellsWhy) {
    openReady({});
    const QImage looking = keep("startup-looking");
    finish();
    EXPECT_NE(keep("startup-none"), looking);
}
